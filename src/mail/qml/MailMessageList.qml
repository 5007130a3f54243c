import QtQuick
import PiloTarn.Mail
import PiloTarn.Design

// The messages of the open conversation, oldest first.
ListView {
    required property NativeMailView mail

    objectName: "mailMessages"
    clip: true
    spacing: Theme.spacing.l
    model: mail.messages
    delegate: MailMessage {
        width: ListView.view.width
    }
}
