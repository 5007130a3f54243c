import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Overview

// The team now: who is clocked in, what they have in progress, how many tasks
// they hold and what is next on their calendar today.
ListView {
    id: list

    required property NativeOverviewView view

    model: view.team
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        required property string name
        required property string role
        required property bool clockedIn
        required property string doing
        required property int openTasks
        required property string next

        objectName: "teamNowRow"
        width: ListView.view.width
        text: clockedIn ? qsTr("%1 · clocked in").arg(name) : name
        avatarName: name
        dot: clockedIn
        subtitle: next.length > 0 ? qsTr("%1 · %2").arg(doing).arg(next) : doing
        detail: openTasks === 1 ? qsTr("1 open task") : qsTr("%1 open tasks").arg(openTasks)
    }

    EmptyState {
        visible: list.count === 0
        anchors.fill: parent
        symbol: "person.3"
        title: qsTr("No one here yet")
        text: qsTr("The team shows here with what each is working on.")
    }
}
