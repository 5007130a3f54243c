import QtQuick
import QtQuick.Dialogs
import PiloTarn.Support
import PiloTarn.Design

// A task's files: name, size and who added it; a click saves one where the
// person chooses.
ListView {
    id: list

    required property NativeSupportTaskDetail task
    property string saving

    function save(fileId, name) {
        saving = fileId
        saveDialog.selectedFile = "file:///" + name
        saveDialog.open()
    }

    implicitHeight: contentHeight
    interactive: false
    spacing: 2

    FileDialog {
        id: saveDialog
        title: qsTr("Save file")
        fileMode: FileDialog.SaveFile
        onAccepted: list.task.downloadFile(list.saving, selectedFile)
    }

    delegate: ListRow {
        required property string fileId
        required property string name
        required property string size
        required property string uploadedBy
        readonly property SupportFiles files: ListView.view as SupportFiles

        width: ListView.view.width
        symbol: "doc.text"
        text: name
        subtitle: uploadedBy
        detail: size
        onClicked: files?.save(fileId, name)
    }
}
