import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.WorkPlan
import PiloTarn.Design

// A new admin task or reminder for the chosen person (or oneself), or an
// admin task being edited. Enter saves, Escape closes.
Rectangle {
    id: form

    required property NativeWorkPlanView view
    // The admin task being edited; empty for a new entry.
    property string editingId
    readonly property bool reminder: editingId.length === 0 && kind.currentIndex === 1

    function dayIndex(day: string): int {
        const days = view.days
        for (let i = 0; i < days.length; ++i)
            if (days[i].day === day)
                return i
        return 0
    }
    function openNew() {
        editingId = ""
        title.text = ""
        notes.text = ""
        time.text = ""
        dayChoice.currentIndex = dayIndex(Qt.formatDate(new Date(), "yyyy-MM-dd"))
        visible = true
        title.input.forceActiveFocus()
    }
    function openEdit(entryId: string, entryTitle: string, day: string, entryNotes: string) {
        editingId = entryId
        title.text = entryTitle
        notes.text = entryNotes
        dayChoice.currentIndex = dayIndex(day)
        visible = true
        title.input.forceActiveFocus()
    }
    function close() {
        visible = false
    }
    function save() {
        if (title.text.trim().length === 0)
            return
        const day = view.days[dayChoice.currentIndex].day
        if (editingId.length > 0)
            view.editAdminTask(editingId, title.text, day, notes.text)
        else if (reminder)
            view.addReminder(title.text, day, time.text)
        else
            view.addAdminTask(title.text, day, notes.text)
        close()
    }

    objectName: "workEntryForm"
    implicitHeight: fields.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.large
    color: Theme.colours.surface
    border.color: Theme.colours.separator

    ColumnLayout {
        id: fields

        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.s

        Text {
            text: form.editingId.length > 0 ? qsTr("Edit admin task")
                  : form.view.person.length > 0 && form.view.person !== form.view.myId
                  ? qsTr("New for %1").arg(form.view.personName) : qsTr("New for you")
            font.pixelSize: Theme.type.body
            font.weight: Font.DemiBold
            color: Theme.colours.text
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true

            ComboBox {
                id: kind
                objectName: "entryKind"
                visible: form.editingId.length === 0
                model: [qsTr("Admin task"), qsTr("Reminder")]
                Accessible.name: qsTr("Kind")
            }
            FormField {
                id: title
                objectName: "entryTitle"
                placeholderText: qsTr("What needs doing")
                onAccepted: form.save()
                Layout.fillWidth: true
            }
            ComboBox {
                id: dayChoice
                objectName: "entryDay"
                model: form.view.days
                textRole: "label"
                Accessible.name: qsTr("Day")
                Layout.preferredWidth: 200
            }
            FormField {
                id: time
                objectName: "entryTime"
                visible: form.reminder
                placeholderText: qsTr("Time, e.g. 9:30")
                onAccepted: form.save()
                Layout.preferredWidth: 140
            }
        }
        FormField {
            id: notes
            objectName: "entryNotes"
            visible: !form.reminder
            placeholderText: qsTr("Notes")
            onAccepted: form.save()
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.alignment: Qt.AlignRight

            ActionButton {
                text: qsTr("Cancel")
                onClicked: form.close()
            }
            ActionButton {
                objectName: "entrySave"
                kind: ActionButton.Primary
                text: qsTr("Save")
                enabled: !form.view.busy && title.text.trim().length > 0
                onClicked: form.save()
            }
        }
    }
}
