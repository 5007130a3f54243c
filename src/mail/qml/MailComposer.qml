import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// The composer over the thread: send-as, recipients, subject, text and
// files. Ctrl+Enter sends; a refused file or a failed send says why and
// keeps everything written.
Rectangle {
    id: box

    required property NativeMailComposer composer

    implicitHeight: form.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.large
    color: Theme.colours.raised
    border.color: Theme.colours.border

    FileDialog {
        id: files
        fileMode: FileDialog.OpenFiles
        onAccepted: box.composer.attachFiles(selectedFiles)
    }

    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        enabled: box.visible
        onActivated: box.composer.send()
    }

    ColumnLayout {
        id: form
        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.s

        ComboBox {
            visible: box.composer.accounts.length > 1
            model: box.composer.accounts
            onActivated: box.composer.from = currentText
            Layout.fillWidth: true
        }
        FormField {
            label: qsTr("To")
            text: box.composer.to
            onTextChanged: box.composer.to = text
            Layout.fillWidth: true
        }
        FormField {
            label: qsTr("Cc")
            text: box.composer.cc
            onTextChanged: box.composer.cc = text
            Layout.fillWidth: true
        }
        FormField {
            objectName: "mailBcc"
            label: qsTr("Bcc")
            text: box.composer.bcc
            onTextChanged: box.composer.bcc = text
            Layout.fillWidth: true
        }
        FormField {
            label: qsTr("Subject")
            text: box.composer.subject
            onTextChanged: box.composer.subject = text
            Layout.fillWidth: true
        }
        ScrollView {
            implicitHeight: 180
            Layout.fillWidth: true
            TextArea {
                objectName: "mailText"
                text: box.composer.text
                wrapMode: TextEdit.Wrap
                onTextChanged: box.composer.text = text
            }
        }
        MailComposerFiles {
            composer: box.composer
            Layout.fillWidth: true
        }
        Label {
            visible: box.composer.errorText.length > 0
            text: box.composer.errorText
            color: Theme.colours.danger
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true
            Label {
                text: box.composer.sendHint
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.tertiaryText
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            ActionButton {
                objectName: "attachFiles"
                symbol: "plus"
                text: qsTr("Attach")
                onClicked: files.open()
            }
            ActionButton {
                text: qsTr("Discard")
                onClicked: box.composer.discard()
            }
            ActionButton {
                objectName: "sendMail"
                kind: ActionButton.Primary
                symbol: "paperplane"
                text: qsTr("Send")
                enabled: !box.composer.sending
                onClicked: box.composer.send()
            }
        }
    }
}
