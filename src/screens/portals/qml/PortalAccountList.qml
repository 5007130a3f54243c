import QtQuick
import QtQuick.Controls
import PiloTarn.Portals
import PiloTarn.Design

// Every client's portal by name: its state, people and open alerts; a
// click opens it.
ListView {
    required property NativePortalsView portals

    model: portals.accounts
    clip: true
    spacing: 2
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        objectName: "portalAccountRow"

        required property string clientId
        required property string name
        required property string status
        required property int people
        required property int openAlerts
        readonly property PortalAccountList list: ListView.view as PortalAccountList

        width: ListView.view.width
        text: name
        symbol: "person.2.crop.square.stack"
        subtitle: people === 1 ? qsTr("%1 · 1 person").arg(status) : qsTr("%1 · %2 people").arg(status).arg(people)
        count: openAlerts
        lit: list !== null && list.portals.openClientId === clientId
        onClicked: list.portals.openPortal(clientId)
    }
}
