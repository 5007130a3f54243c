import QtQuick
import QtQuick.Controls
import PiloTarn.Customers
import PiloTarn.Design

// The customers by name, with their stage and next follow-up; arrows move,
// Enter opens, and the open one is lit.
ListView {
    id: list

    required property NativeCustomersView view

    model: view.customers
    clip: true
    spacing: 2
    focus: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    Keys.onReturnPressed: view.open(view.customerAt(currentIndex))
    Keys.onEnterPressed: view.open(view.customerAt(currentIndex))

    delegate: ListRow {
        objectName: "customerRow"

        required property int index
        required property string clientId
        required property string name
        required property string stageLabel
        required property string company
        required property string email
        required property string followUp
        required property int openTasks
        readonly property CustomerList owner: ListView.view as CustomerList

        width: ListView.view.width
        avatarName: name
        text: name
        subtitle: company.length > 0 ? stageLabel + " · " + company : email.length > 0 ? stageLabel + " · " + email : stageLabel
        detail: followUp.length > 0 ? qsTr("Follow up %1").arg(followUp) : ""
        count: openTasks
        lit: owner !== null && clientId === owner.view.profile.clientId
        onClicked: {
            if (owner) {
                owner.currentIndex = index
                owner.view.open(clientId)
            }
        }
    }
}
