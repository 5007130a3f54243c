import QtQuick
import PiloTarn.Portals
import PiloTarn.Design

// The work shown on the open portal, last changed first.
ListView {
    required property NativePortalsView portals

    model: portals.work
    interactive: false
    implicitHeight: contentHeight
    spacing: 2

    delegate: ListRow {
        id: item

        required property string workId
        required property string title
        required property string status
        readonly property PortalWorkList list: ListView.view as PortalWorkList

        width: ListView.view.width
        text: title
        subtitle: status
        symbol: "wrench.and.screwdriver"
        rightPadding: Theme.spacing.s + remove.width

        IconButton {
            id: remove
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "trash"
            text: qsTr("Remove from the portal")
            onClicked: item.list.portals.deleteWork(item.workId)
        }
    }
}
