import QtQuick
import QtQuick.Dialogs
import PiloTarn.Mail

// Where an attachment is saved, chosen by the person.
FileDialog {
    id: dialog

    required property NativeMailView mail
    required property string messageId
    property string attachmentId

    function save(id, name) {
        attachmentId = id
        currentFile = "file:///" + name
        open()
    }

    fileMode: FileDialog.SaveFile
    onAccepted: mail.saveAttachment(messageId, attachmentId, selectedFile)
}
