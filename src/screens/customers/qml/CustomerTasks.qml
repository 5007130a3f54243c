import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Customers
import PiloTarn.Design

// The customer's tasks, open ones first: ticked off or removed in place.
ListView {
    required property NativeCustomerProfile profile

    model: profile.tasks
    interactive: false
    implicitHeight: contentHeight

    delegate: RowLayout {
        id: task

        required property string taskId
        required property string title
        required property string due
        required property bool done
        readonly property CustomerTasks owner: ListView.view as CustomerTasks

        width: ListView.view.width
        spacing: Theme.spacing.xs

        CheckBox {
            checked: task.done
            text: task.due.length > 0 && !task.done ? qsTr("%1 · due %2").arg(task.title).arg(task.due) : task.title
            onToggled: if (task.owner) task.owner.profile.setTaskDone(task.taskId, checked)
            Layout.fillWidth: true
        }
        IconButton {
            symbol: "trash"
            text: qsTr("Delete task")
            onClicked: if (task.owner) task.owner.profile.deleteTask(task.taskId)
        }
    }
}
