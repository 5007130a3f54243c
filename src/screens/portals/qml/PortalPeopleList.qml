import QtQuick
import PiloTarn.Portals
import PiloTarn.Design

// The people who may use the open portal: a sign-in link made for one, or
// one removed.
ListView {
    required property NativePortalsView portals

    model: portals.people
    interactive: false
    implicitHeight: contentHeight
    spacing: 2

    delegate: ListRow {
        id: person

        objectName: "portalPersonRow"

        required property string personId
        required property string name
        required property string email
        required property string lastSeenAt
        readonly property PortalPeopleList list: ListView.view as PortalPeopleList

        width: ListView.view.width
        text: name
        subtitle: lastSeenAt.length > 0 ? qsTr("%1 · last seen %2").arg(email).arg(lastSeenAt.slice(0, 10))
                                        : qsTr("%1 · not signed in yet").arg(email)
        symbol: "person.crop.circle"
        rightPadding: Theme.spacing.s + actions.width

        Row {
            id: actions
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            IconButton {
                symbol: "link"
                text: qsTr("Make a sign-in link")
                onClicked: person.list.portals.makePersonLink(person.personId)
            }
            IconButton {
                symbol: "trash"
                text: qsTr("Remove from the portal")
                onClicked: person.list.portals.removePerson(person.personId)
            }
        }
    }
}
