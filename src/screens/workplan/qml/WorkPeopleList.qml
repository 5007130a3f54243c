import QtQuick
import QtQuick.Controls
import PiloTarn.WorkPlan
import PiloTarn.Design

// The team in the shown week, each with how much of their plan is done;
// choosing someone shows only their entries, "Everyone" shows all.
ListView {
    required property NativeWorkPlanView view

    objectName: "workPeople"
    model: view.people
    clip: true
    spacing: Theme.spacing.xxs
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    header: ListRow {
        readonly property WorkPeopleList list: ListView.view as WorkPeopleList

        objectName: "everyone"
        width: ListView.view.width
        text: qsTr("Everyone")
        symbol: "person.3"
        lit: list.view.person.length === 0
        onClicked: list.view.person = ""
    }

    delegate: ListRow {
        required property string personId
        required property string name
        required property string role
        required property int planned
        required property int done
        readonly property WorkPeopleList list: ListView.view as WorkPeopleList

        objectName: "person_" + personId
        width: ListView.view.width
        text: name
        avatarName: name
        subtitle: role
        detail: planned > 0 ? qsTr("%1/%2").arg(done).arg(planned) : qsTr("free")
        lit: list.view.person === personId
        onClicked: list.view.person = personId
    }
}
