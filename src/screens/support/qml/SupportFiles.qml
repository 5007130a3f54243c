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

    function save(fileId) {
        saving = fileId
        if (saveDialog.active)
            (saveDialog.item as FileDialog).open()
        else
            saveDialog.active = true
    }

    implicitHeight: contentHeight
    interactive: false
    spacing: 2

    // Made when first wanted: a file dialog starts the desktop's portal.
    Loader {
        id: saveDialog
        active: false
        sourceComponent: FileDialog {
            title: qsTr("Save file")
            fileMode: FileDialog.SaveFile
        }
        onLoaded: {
            const dialog = saveDialog.item as FileDialog
            dialog.accepted.connect(() => list.task.downloadFile(list.saving, dialog.selectedFile))
            dialog.open()
        }
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
        onClicked: files?.save(fileId)
    }
}
