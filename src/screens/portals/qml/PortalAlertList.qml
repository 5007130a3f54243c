import QtQuick
import PiloTarn.Portals
import PiloTarn.Design

// The alerts nobody has acknowledged yet, newest first.
ListView {
    required property NativePortalsView portals

    model: portals.alerts
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds

    delegate: ListRow {
        id: alert

        objectName: "portalAlertRow"

        required property string alertId
        required property string clientName
        required property string message
        readonly property PortalAlertList list: ListView.view as PortalAlertList

        width: ListView.view.width
        rightPadding: Theme.spacing.s + done.width
        symbol: "bell"
        text: message
        subtitle: clientName

        IconButton {
            id: done
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "checkmark"
            text: qsTr("Acknowledge")
            onClicked: alert.list.portals.acknowledgeAlert(alert.alertId)
        }
    }
}
