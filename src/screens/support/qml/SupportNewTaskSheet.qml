import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// A new task: its title, priority, customer, assignee and due day. It opens
// beside the board once made.
ConfirmSheet {
    id: sheet

    required property NativeSupportView support

    title: qsTr("New task")
    text: qsTr("It starts in “To do”.")
    confirmText: qsTr("Create")
    onOpened: {
        taskTitle.text = ""
        due.text = ""
        taskTitle.input.forceActiveFocus()
    }
    onConfirmed: support.createTask(taskTitle.text, priority.currentValue, client.currentValue, assignee.currentValue,
                                    due.text)

    FormField {
        id: taskTitle
        label: qsTr("Title")
        Layout.fillWidth: true
    }
    ComboBox {
        id: priority
        model: [{ id: "normal", name: qsTr("Normal priority") }, { id: "low", name: qsTr("Low priority") },
            { id: "high", name: qsTr("High priority") }, { id: "urgent", name: qsTr("Urgent") }]
        textRole: "name"
        valueRole: "id"
        Accessible.name: qsTr("Priority")
        Layout.fillWidth: true
    }
    ComboBox {
        id: client
        model: sheet.support.withNone(qsTr("No customer"), sheet.support.clients)
        textRole: "name"
        valueRole: "id"
        Accessible.name: qsTr("Customer")
        Layout.fillWidth: true
    }
    ComboBox {
        id: assignee
        model: sheet.support.withNone(qsTr("Nobody yet"), sheet.support.people)
        textRole: "name"
        valueRole: "id"
        Accessible.name: qsTr("Assignee")
        Layout.fillWidth: true
    }
    FormField {
        id: due
        label: qsTr("Due (YYYY-MM-DD, optional)")
        Layout.fillWidth: true
    }
}
