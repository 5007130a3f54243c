import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// New recurring work: what, how often, the first due day, for whom and by
// whom. Its first task is made at once.
ConfirmSheet {
    id: sheet

    required property NativeSupportView support

    title: qsTr("New recurring work")
    text: qsTr("Completing one task makes the next.")
    confirmText: qsTr("Create")
    onOpened: {
        ruleTitle.text = ""
        firstDue.text = ""
    }
    onConfirmed: support.addRecurring(ruleTitle.text, every.currentValue, firstDue.text, client.currentValue,
                                      assignee.currentValue)

    FormField {
        id: ruleTitle
        label: qsTr("Title")
        Layout.fillWidth: true
    }
    ComboBox {
        id: every
        model: [{ id: "week", name: qsTr("Every week") }, { id: "month", name: qsTr("Every month") },
            { id: "quarter", name: qsTr("Every quarter") }]
        textRole: "name"
        valueRole: "id"
        Accessible.name: qsTr("How often")
        Layout.fillWidth: true
    }
    FormField {
        id: firstDue
        label: qsTr("First due (YYYY-MM-DD)")
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
}
