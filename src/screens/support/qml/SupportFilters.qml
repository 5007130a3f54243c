import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// The board's view picker and filters: whose, which customer, how pressing,
// when due, and the text; saving them as a view, making a view the default,
// renaming and deleting saved ones, and a new task.
ColumnLayout {
    id: bar

    required property NativeSupportView support

    signal newTask()

    function focusSearch() {
        search.forceActiveFocus()
        search.selectAll()
    }

    spacing: Theme.spacing.xs

    ConfirmSheet {
        id: nameSheet
        property string renaming
        title: renaming.length > 0 ? qsTr("Rename view") : qsTr("Save view")
        text: renaming.length > 0 ? qsTr("The view keeps its filters.")
                                  : qsTr("The filters shown now, under a name of your own.")
        confirmText: renaming.length > 0 ? qsTr("Rename") : qsTr("Save")
        onOpened: viewName.text = renaming.length > 0 ? bar.support.viewTitle : ""
        onConfirmed: renaming.length > 0 ? bar.support.renameView(renaming, viewName.text)
                                         : bar.support.saveView(viewName.text)

        FormField {
            id: viewName
            label: qsTr("Name")
            Layout.fillWidth: true
        }
    }
    ConfirmSheet {
        id: deleteSheet
        title: qsTr("Delete “%1”?").arg(bar.support.viewTitle)
        text: qsTr("The view goes; its tasks stay.")
        confirmText: qsTr("Delete")
        destructive: true
        onConfirmed: bar.support.deleteView(bar.support.viewId)
    }

    RowLayout {
        spacing: Theme.spacing.xs
        Layout.fillWidth: true

        ComboBox {
            objectName: "supportView"
            model: bar.support.views
            textRole: "title"
            valueRole: "viewId"
            currentIndex: indexOfValue(bar.support.viewId)
            Accessible.name: qsTr("View")
            onActivated: bar.support.viewId = currentValue
            Layout.preferredWidth: 170
        }
        IconButton {
            symbol: "checkmark"
            lit: bar.support.defaultViewId === bar.support.viewId
            text: lit ? qsTr("The view the board opens with") : qsTr("Open the board with this view")
            onClicked: bar.support.defaultViewId = bar.support.viewId
        }
        IconButton {
            visible: bar.support.savedViewChosen
            symbol: "pencil"
            text: qsTr("Rename view")
            onClicked: {
                nameSheet.renaming = bar.support.viewId
                nameSheet.open()
            }
        }
        IconButton {
            visible: bar.support.savedViewChosen
            symbol: "trash"
            text: qsTr("Delete view")
            onClicked: deleteSheet.open()
        }

        SearchField {
            id: search
            objectName: "supportSearch"
            placeholderText: qsTr("Search tasks")
            text: bar.support.searchText
            onTextChanged: bar.support.searchText = text
            Layout.fillWidth: true
            Layout.minimumWidth: 120
        }
        CheckBox {
            text: qsTr("Hide done")
            checked: bar.support.hideDone
            onToggled: bar.support.hideDone = checked
        }
        IconButton {
            symbol: "bookmark"
            text: qsTr("Save as a view")
            onClicked: {
                nameSheet.renaming = ""
                nameSheet.open()
            }
        }
        ActionButton {
            objectName: "supportNewTask"
            kind: ActionButton.Primary
            symbol: "plus"
            text: qsTr("New task")
            onClicked: bar.newTask()
        }
    }

    RowLayout {
        spacing: Theme.spacing.xs
        Layout.fillWidth: true

        ComboBox {
            objectName: "supportAssignee"
            model: bar.support.withNone(qsTr("Anyone"), bar.support.people)
            textRole: "name"
            valueRole: "id"
            currentIndex: Math.max(0, indexOfValue(bar.support.assigneeFilter))
            Accessible.name: qsTr("Assignee")
            onActivated: bar.support.assigneeFilter = currentValue
            Layout.fillWidth: true
        }
        ComboBox {
            objectName: "supportClient"
            model: bar.support.withNone(qsTr("Every customer"), bar.support.clients)
            textRole: "name"
            valueRole: "id"
            currentIndex: Math.max(0, indexOfValue(bar.support.clientFilter))
            Accessible.name: qsTr("Customer")
            onActivated: bar.support.clientFilter = currentValue
            Layout.fillWidth: true
        }
        ComboBox {
            objectName: "supportPriority"
            model: [{ id: "", name: qsTr("Any priority") }, { id: "urgent", name: qsTr("Urgent") },
                { id: "high", name: qsTr("High") }, { id: "normal", name: qsTr("Normal") }, { id: "low", name: qsTr("Low") }]
            textRole: "name"
            valueRole: "id"
            currentIndex: Math.max(0, indexOfValue(bar.support.priorityFilter))
            Accessible.name: qsTr("Priority")
            onActivated: bar.support.priorityFilter = currentValue
            Layout.fillWidth: true
        }
        ComboBox {
            objectName: "supportDue"
            model: [{ id: "", name: qsTr("Any time") }, { id: "overdue", name: qsTr("Overdue") },
                { id: "today", name: qsTr("Due today") }, { id: "week", name: qsTr("Due this week") },
                { id: "none", name: qsTr("No due date") }]
            textRole: "name"
            valueRole: "id"
            currentIndex: Math.max(0, indexOfValue(bar.support.dueFilter))
            Accessible.name: qsTr("Due")
            onActivated: bar.support.dueFilter = currentValue
            Layout.fillWidth: true
        }
        ActionButton {
            kind: ActionButton.Plain
            text: qsTr("Clear filters")
            onClicked: bar.support.clearFilters()
        }
    }
}
