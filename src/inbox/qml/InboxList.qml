import QtQuick
import QtQuick.Controls
import PiloTarn.Inbox
import PiloTarn.Design

// The threads, newest first: who wrote, on which channel, the assignee, the
// preview (marked when it is an unsent draft), the time and a dot on those
// waiting for a reply. The open one is lit.
ListView {
    required property NativeInboxView inbox

    model: inbox.threads
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        objectName: "inboxThread"

        required property string threadId
        required property string title
        required property string kind
        required property string owner
        required property string preview
        required property bool previewDraft
        required property string time
        required property bool unreplied
        readonly property InboxList list: ListView.view as InboxList
        readonly property bool email: kind === "email"
        readonly property bool webForm: kind === "web"

        width: ListView.view.width
        text: owner.length > 0 ? title + " · " + owner : title
        symbol: email ? "envelope" : webForm ? "globe" : "message"
        subtitle: previewDraft ? qsTr("Draft: %1").arg(preview) : preview
        detail: time
        dot: unreplied
        Accessible.description: unreplied ? qsTr("Waiting for a reply") : ""
        lit: list !== null && threadId === list.inbox.selectedThread
        onClicked: list.inbox.selectThread(threadId)
    }
}
