import QtQuick
import PiloTarn.Mail
import PiloTarn.Design

// The views a mailbox offers, the shown one lit.
Flow {
    id: views

    required property NativeMailView mail

    spacing: Theme.spacing.xs

    Repeater {
        model: [["inbox", qsTr("Inbox")], ["starred", qsTr("Starred")], ["sent", qsTr("Sent")],
                ["snoozed", qsTr("Snoozed")], ["done", qsTr("Done")], ["trash", qsTr("Trash")]]
        delegate: ActionButton {
            required property var modelData
            readonly property NativeMailView mail: (parent as MailViewButtons).mail
            text: modelData[1]
            kind: mail.view === modelData[0] && mail.searchText.length === 0 ? ActionButton.Primary
                                                                              : ActionButton.Secondary
            onClicked: mail.view = modelData[0]
        }
    }
}
