import QtQuick
import PiloTarn.Customers
import PiloTarn.Design

// The record's files: a click asks where to save one (`saveRequested`).
ListView {
    required property NativeCustomerProfile profile

    signal saveRequested(string fileId)

    model: profile.files
    interactive: false
    implicitHeight: contentHeight

    delegate: ListRow {
        id: file

        required property string fileId
        required property string name
        required property string size
        required property string added
        readonly property CustomerFiles owner: ListView.view as CustomerFiles

        width: ListView.view.width
        symbol: "doc.text"
        text: name
        subtitle: qsTr("%1 · added %2").arg(size).arg(added)
        onClicked: if (owner) owner.saveRequested(fileId)

        IconButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "trash"
            text: qsTr("Delete file")
            onClicked: if (file.owner) file.owner.profile.deleteFile(file.fileId)
        }
    }
}
