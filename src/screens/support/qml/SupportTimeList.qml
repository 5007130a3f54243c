import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// The Time section: the last month's logged time of everyone on the board,
// with the last seven days' total.
ColumnLayout {
    id: page

    required property NativeSupportView support

    spacing: Theme.spacing.s

    SectionHeader {
        text: qsTr("Last 7 days: %1").arg(page.support.weekLogged)
        Layout.fillWidth: true
    }
    SupportTimeEntries {
        id: entries
        objectName: "supportTime"
        interactive: true
        model: page.support.timeEntries
        ScrollBar.vertical: ScrollBar {}
        onOpened: taskId => page.support.openTask(taskId)
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
    EmptyState {
        visible: entries.count === 0
        symbol: "timer"
        title: qsTr("No time logged this month")
        text: qsTr("Start a timer on a task, or log time from the task.")
        Layout.fillWidth: true
    }
}
