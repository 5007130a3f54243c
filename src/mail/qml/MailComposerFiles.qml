import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// The files attached in the composer, each with a way to take it off.
ColumnLayout {
    id: files

    required property NativeMailComposer composer

    spacing: Theme.spacing.xs

    Repeater {
        model: files.composer.files
        delegate: RowLayout {
            id: file
            required property var modelData
            Label {
                text: file.modelData.name
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            IconButton {
                symbol: "xmark"
                onClicked: (file.parent as MailComposerFiles).composer.removeFile(file.modelData.id)
            }
        }
    }
}
