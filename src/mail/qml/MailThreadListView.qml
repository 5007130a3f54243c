import QtQuick
import PiloTarn.Mail
import PiloTarn.Design

// The conversations under their section titles; the next page loads as the
// end comes into sight.
ListView {
    id: list

    required property NativeMailView mail

    objectName: "mailThreads"
    clip: true
    model: mail.threads
    section.property: "section"
    section.delegate: SectionHeader {
        required property string section
        text: section
        width: ListView.view.width
    }
    onAtYEndChanged: if (atYEnd && mail.hasMore)
                         mail.loadMore()

    delegate: ListRow {
        required property string threadId
        required property string fromName
        required property string subject
        required property bool unread
        required property bool pinned

        width: ListView.view.width
        text: fromName
        subtitle: subject
        symbol: "envelope"
        // Marked wherever they are listed: only the inbox gathers pinned
        // threads under a title of their own.
        detail: pinned ? qsTr("Pinned") : ""
        count: unread ? 1 : 0
        lit: (ListView.view as MailThreadListView).mail.selectedThread === threadId
        onClicked: (ListView.view as MailThreadListView).mail.select(threadId)
    }
}
