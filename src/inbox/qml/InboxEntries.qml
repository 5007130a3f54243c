import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Inbox
import PiloTarn.Design

// A thread's entries, oldest first: the customer's on the left, the team's
// on the right with their author and delivery status, mentions and
// attachments beneath; an unsent draft can be discarded by its author.
ListView {
    id: entries

    required property NativeInboxView inbox

    model: inbox.entries
    clip: true
    spacing: Theme.spacing.s
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    onCountChanged: positionViewAtEnd()

    delegate: ColumnLayout {
        id: entry

        required property string entryId
        required property bool inbound
        required property string body
        required property string author
        required property string status
        required property string time
        required property var mentions
        required property var attachments
        required property bool canDiscard
        readonly property InboxEntries list: ListView.view as InboxEntries

        width: ListView.view.width
        spacing: 2

        Text {
            text: {
                const parts = []
                for (const part of [entry.author, entry.time, entry.status === "draft" ? qsTr("Draft") : entry.status])
                    if (part.length > 0)
                        parts.push(part)
                return parts.join(" · ")
            }
            font.pixelSize: Theme.type.caption
            color: Theme.colours.tertiaryText
            Layout.alignment: entry.inbound ? Qt.AlignLeft : Qt.AlignRight
        }

        Rectangle {
            objectName: "inboxEntry"
            radius: Theme.radii.large
            color: entry.inbound ? Theme.colours.surface : Theme.colours.accentSoft
            // The customer's bubbles stand out from the page by their edge,
            // a draft's by its accent.
            border.width: entry.inbound || entry.status === "draft" ? 1 : 0
            border.color: entry.status === "draft" ? Theme.colours.accent : Theme.colours.separator
            implicitWidth: Math.min(bubble.implicitWidth + 2 * Theme.spacing.m, entry.width * 0.75)
            implicitHeight: bubble.implicitHeight + 2 * Theme.spacing.s
            Layout.alignment: entry.inbound ? Qt.AlignLeft : Qt.AlignRight
            Layout.maximumWidth: entry.width * 0.75

            Text {
                id: bubble
                anchors.fill: parent
                anchors.leftMargin: Theme.spacing.m
                anchors.rightMargin: Theme.spacing.m
                anchors.topMargin: Theme.spacing.s
                text: entry.body
                wrapMode: Text.Wrap
                font.pixelSize: Theme.type.body
                color: Theme.colours.text
            }
        }

        Text {
            visible: entry.mentions.length > 0 || entry.attachments.length > 0
            text: entry.mentions.map(name => "@" + name).concat(entry.attachments.map(file => file.name)).join("  ")
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            Layout.alignment: entry.inbound ? Qt.AlignLeft : Qt.AlignRight
        }

        ActionButton {
            objectName: "inboxDiscard"
            visible: entry.canDiscard
            symbol: "trash"
            text: qsTr("Discard draft")
            Layout.alignment: Qt.AlignRight
            onClicked: entry.list.inbox.discardDraft(entry.entryId)
        }
    }
}
