import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// The open conversation: its subject and actions, then each message drawn
// from its blocks, and the assistant's reply drafts for it.
ColumnLayout {
    id: thread

    required property NativeMailView mail

    spacing: 0

    Label {
        visible: thread.mail.selectedThread.length === 0
        text: qsTr("Choose a conversation to read it.")
        color: Theme.colours.secondaryText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    RowLayout {
        visible: thread.mail.selectedThread.length > 0
        spacing: Theme.spacing.xs
        Layout.fillWidth: true
        Layout.margins: Theme.spacing.m

        Label {
            objectName: "threadSubject"
            text: thread.mail.threadSubject
            font.pixelSize: Theme.type.title2
            font.weight: Font.DemiBold
            color: Theme.colours.text
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        IconButton {
            symbol: "arrow.uturn.backward"
            onClicked: thread.mail.reply(false)
        }
        IconButton {
            symbol: "paperplane"
            onClicked: thread.mail.forward()
        }
        IconButton {
            symbol: "checkmark"
            onClicked: thread.mail.act("done")
        }
        IconButton {
            symbol: "trash"
            onClicked: thread.mail.act("trash")
        }
        IconButton {
            objectName: "threadMore"
            symbol: "ellipsis"
            onClicked: more.popup()

            Menu {
                id: more
                MenuItem {
                    text: qsTr("Mark unread")
                    onTriggered: thread.mail.act("unread")
                }
                MenuItem {
                    text: qsTr("Pin")
                    onTriggered: thread.mail.act("pin")
                }
                MenuItem {
                    text: qsTr("Unpin")
                    onTriggered: thread.mail.act("unpin")
                }
                MenuItem {
                    // Tomorrow at eight in the morning.
                    text: qsTr("Snooze until tomorrow")
                    onTriggered: {
                        const until = new Date()
                        until.setDate(until.getDate() + 1)
                        until.setHours(8, 0, 0, 0)
                        thread.mail.snooze(until.getTime())
                    }
                }
                Menu {
                    id: addLabel
                    title: qsTr("Add label")
                    enabled: thread.mail.labels.length > 0
                    Instantiator {
                        model: thread.mail.labels
                        // The label's id as the item's name: the delegate
                        // cannot reach the screen's state itself.
                        delegate: MenuItem {
                            required property var modelData
                            objectName: modelData.id
                            text: modelData.name
                        }
                        onObjectAdded: (index, object) => {
                            const item = object as MenuItem
                            addLabel.insertItem(index, item)
                            item.triggered.connect(() => thread.mail.setLabel(item.objectName, true))
                        }
                        onObjectRemoved: (index, object) => addLabel.removeItem(object as MenuItem)
                    }
                }
                Menu {
                    id: removeLabel
                    title: qsTr("Remove label")
                    enabled: thread.mail.labels.length > 0
                    Instantiator {
                        model: thread.mail.labels
                        // The label's id as the item's name: the delegate
                        // cannot reach the screen's state itself.
                        delegate: MenuItem {
                            required property var modelData
                            objectName: modelData.id
                            text: modelData.name
                        }
                        onObjectAdded: (index, object) => {
                            const item = object as MenuItem
                            removeLabel.insertItem(index, item)
                            item.triggered.connect(() => thread.mail.setLabel(item.objectName, false))
                        }
                        onObjectRemoved: (index, object) => removeLabel.removeItem(object as MenuItem)
                    }
                }
                MenuItem {
                    text: qsTr("Move to Inbox")
                    onTriggered: thread.mail.act("inbox")
                }
                MenuItem {
                    text: qsTr("Restore from Trash")
                    onTriggered: thread.mail.act("untrash")
                }
            }
        }
    }

    ErrorBanner {
        visible: thread.mail.errorText.length > 0 && thread.mail.selectedThread.length > 0
        text: thread.mail.errorText
        Layout.fillWidth: true
        Layout.leftMargin: Theme.spacing.m
        Layout.rightMargin: Theme.spacing.m
    }

    Repeater {
        model: thread.mail.replyDrafts
        delegate: ColumnLayout {
            id: draftRow
            required property var modelData
            readonly property NativeMailView mail: (parent as MailThreadView).mail
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.m
            Layout.rightMargin: Theme.spacing.m

            RowLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Label {
                    text: qsTr("Pilo drafted a reply: ") + draftRow.modelData.draft
                    color: Theme.colours.secondaryText
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    Layout.fillWidth: true
                }
                ActionButton { text: qsTr("Use"); onClicked: draftRow.mail.useReplyDraft(draftRow.modelData.id) }
                ActionButton { text: qsTr("Skip"); onClicked: draftRow.mail.skipReplyDraft(draftRow.modelData.id) }
            }
            // Asks the assistant to write the draft again, told how.
            RowLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                FormField {
                    id: instruction
                    objectName: "draftInstruction"
                    placeholderText: qsTr("Tell Pilo how to change this reply")
                    Layout.fillWidth: true
                    onAccepted: instruct.clicked()
                }
                ActionButton {
                    id: instruct
                    objectName: "instructDraft"
                    text: qsTr("Rewrite")
                    enabled: instruction.text.trim().length > 0
                    onClicked: {
                        draftRow.mail.instructReplyDraft(draftRow.modelData.id, instruction.text.trim())
                        instruction.text = ""
                    }
                }
            }
        }
    }

    MailMessageList {
        visible: thread.mail.selectedThread.length > 0
        mail: thread.mail
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.margins: Theme.spacing.m
    }

    Rectangle {
        visible: thread.mail.pendingLink.length > 0
        color: Theme.colours.raised
        border.color: Theme.colours.border
        radius: Theme.radii.large
        implicitHeight: confirm.implicitHeight + 2 * Theme.spacing.m
        Layout.fillWidth: true
        Layout.margins: Theme.spacing.m

        ColumnLayout {
            id: confirm
            anchors.fill: parent
            anchors.margins: Theme.spacing.m
            spacing: Theme.spacing.s
            Label {
                text: qsTr("The link text names a different site than where it really goes:")
                color: Theme.colours.text
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            Label {
                objectName: "pendingLink"
                text: thread.mail.pendingLink
                color: Theme.colours.danger
                wrapMode: Text.WrapAnywhere
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: Theme.spacing.s
                ActionButton { text: qsTr("Open"); onClicked: thread.mail.confirmLink() }
                ActionButton { text: qsTr("Cancel"); onClicked: thread.mail.cancelLink() }
            }
        }
    }
}
