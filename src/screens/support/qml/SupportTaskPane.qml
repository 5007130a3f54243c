import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// The open task beside the board: its title, status, priority, assignee,
// customer and due day, each changed in place; its timer and logged time;
// its description, subtasks, comments and files. Escape closes it.
Pane {
    id: pane

    required property NativeSupportView support
    readonly property NativeSupportTaskDetail task: support.task
    readonly property bool timing: support.timerTaskId === task.taskId && task.taskId.length > 0

    padding: Theme.spacing.m
    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.surface
        border.width: 1
        border.color: Theme.colours.separator
    }

    // Made when first wanted: a file dialog starts the desktop's portal.
    Loader {
        id: attachDialog
        active: false
        sourceComponent: FileDialog {
            title: qsTr("Attach a file")
        }
        onLoaded: {
            const dialog = attachDialog.item as FileDialog
            dialog.accepted.connect(() => pane.task.attachFile(dialog.selectedFile))
            dialog.open()
        }
    }

    ScrollView {
        id: scroller
        anchors.fill: parent
        contentWidth: availableWidth

        ColumnLayout {
            width: scroller.availableWidth
            spacing: Theme.spacing.s

            RowLayout {
                Layout.fillWidth: true
                TextField {
                    objectName: "supportTaskTitle"
                    text: pane.task.title
                    font.pixelSize: Theme.type.title3
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    background: null
                    Accessible.name: qsTr("Title")
                    onEditingFinished: pane.task.edit("title", text)
                    Layout.fillWidth: true
                }
                IconButton {
                    symbol: "xmark"
                    text: qsTr("Close (Escape)")
                    onClicked: pane.task.close()
                }
            }

            ErrorBanner {
                visible: text.length > 0
                text: pane.task.errorText
                Layout.fillWidth: true
            }

            GridLayout {
                columns: 2
                columnSpacing: Theme.spacing.s
                rowSpacing: Theme.spacing.xs
                Layout.fillWidth: true

                Label { text: qsTr("Status"); color: Theme.colours.secondaryText; font.pixelSize: Theme.type.footnote }
                ComboBox {
                    model: [{ id: "todo", name: qsTr("To do") }, { id: "in_progress", name: qsTr("In progress") },
                        { id: "waiting", name: qsTr("Waiting") }, { id: "done", name: qsTr("Done") }]
                    textRole: "name"
                    valueRole: "id"
                    currentIndex: indexOfValue(pane.task.status)
                    Accessible.name: qsTr("Status")
                    onActivated: pane.task.edit("status", currentValue)
                    Layout.fillWidth: true
                }
                Label { text: qsTr("Priority"); color: Theme.colours.secondaryText; font.pixelSize: Theme.type.footnote }
                ComboBox {
                    model: [{ id: "low", name: qsTr("Low") }, { id: "normal", name: qsTr("Normal") },
                        { id: "high", name: qsTr("High") }, { id: "urgent", name: qsTr("Urgent") }]
                    textRole: "name"
                    valueRole: "id"
                    currentIndex: indexOfValue(pane.task.priority)
                    Accessible.name: qsTr("Priority")
                    onActivated: pane.task.edit("priority", currentValue)
                    Layout.fillWidth: true
                }
                Label { text: qsTr("Assignee"); color: Theme.colours.secondaryText; font.pixelSize: Theme.type.footnote }
                ComboBox {
                    model: pane.support.withNone(qsTr("Nobody"), pane.support.people)
                    textRole: "name"
                    valueRole: "id"
                    currentIndex: Math.max(0, indexOfValue(pane.task.assigneeId))
                    Accessible.name: qsTr("Assignee")
                    onActivated: pane.task.edit("assignee_id", currentValue)
                    Layout.fillWidth: true
                }
                Label { text: qsTr("Customer"); color: Theme.colours.secondaryText; font.pixelSize: Theme.type.footnote }
                RowLayout {
                    Layout.fillWidth: true
                    ComboBox {
                        model: pane.support.withNone(qsTr("None"), pane.support.clients)
                        textRole: "name"
                        valueRole: "id"
                        currentIndex: Math.max(0, indexOfValue(pane.task.clientId))
                        Accessible.name: qsTr("Customer")
                        onActivated: pane.task.edit("client_id", currentValue)
                        Layout.fillWidth: true
                    }
                    IconButton {
                        visible: pane.task.clientId.length > 0
                        symbol: "building.2"
                        text: qsTr("The customer's page")
                        onClicked: {
                            pane.support.openClient(pane.task.clientId)
                            pane.task.close()
                        }
                    }
                }
                Label { text: qsTr("Due"); color: Theme.colours.secondaryText; font.pixelSize: Theme.type.footnote }
                TextField {
                    text: pane.task.dueDate
                    placeholderText: qsTr("YYYY-MM-DD")
                    Accessible.name: qsTr("Due day")
                    Accessible.description: pane.task.dueLabel
                    onEditingFinished: if (text !== pane.task.dueDate) pane.task.edit("due_date", text)
                    Layout.fillWidth: true
                }
            }

            RowLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                ActionButton {
                    objectName: "supportTaskTimer"
                    kind: pane.timing ? ActionButton.Primary : ActionButton.Secondary
                    symbol: "timer"
                    text: pane.timing ? qsTr("Stop timer · %1").arg(pane.support.timerText) : qsTr("Start timer")
                    onClicked: pane.timing ? pane.support.stopTimer() : pane.support.startTimer(pane.task.taskId)
                }
                Label {
                    text: pane.task.logged.length > 0 ? qsTr("%1 logged").arg(pane.task.logged) : qsTr("No time logged")
                    color: Theme.colours.secondaryText
                    font.pixelSize: Theme.type.footnote
                    Layout.fillWidth: true
                }
            }
            RowLayout {
                spacing: Theme.spacing.xs
                Layout.fillWidth: true
                SpinBox {
                    id: minutes
                    from: 5
                    to: 600
                    stepSize: 5
                    value: 30
                    editable: true
                    Accessible.name: qsTr("Minutes")
                }
                TextField {
                    id: timeNote
                    placeholderText: qsTr("What was done")
                    Layout.fillWidth: true
                }
                ActionButton {
                    text: qsTr("Log")
                    onClicked: {
                        pane.task.logTime(minutes.value, timeNote.text)
                        timeNote.clear()
                    }
                }
            }

            SectionHeader { text: qsTr("Description"); Layout.fillWidth: true }
            TextArea {
                text: pane.task.description
                placeholderText: qsTr("What needs doing")
                wrapMode: TextEdit.Wrap
                Accessible.name: qsTr("Description")
                onEditingFinished: pane.task.edit("description", text)
                Layout.fillWidth: true
            }

            SectionHeader { text: qsTr("Subtasks"); Layout.fillWidth: true }
            SupportCardList {
                checkable: true
                model: pane.task.subtasks
                onToggled: (taskId, done) => pane.task.setSubtaskDone(taskId, done)
                Layout.fillWidth: true
            }
            TextField {
                placeholderText: qsTr("Add a subtask")
                onAccepted: {
                    pane.task.addSubtask(text)
                    clear()
                }
                Layout.fillWidth: true
            }

            SectionHeader { text: qsTr("Comments"); Layout.fillWidth: true }
            SupportNotes {
                model: pane.task.comments
                Layout.fillWidth: true
            }
            TextField {
                placeholderText: qsTr("Add a comment")
                onAccepted: {
                    pane.task.addComment(text)
                    clear()
                }
                Layout.fillWidth: true
            }

            SectionHeader {
                text: qsTr("Files")
                Layout.fillWidth: true
                IconButton {
                    symbol: "plus"
                    text: qsTr("Attach a file (5 MB at most)")
                    onClicked: attachDialog.active ? (attachDialog.item as FileDialog).open() : attachDialog.active = true
                }
            }
            SupportFiles {
                task: pane.task
                model: pane.task.files
                Layout.fillWidth: true
            }

            SectionHeader { text: qsTr("Time"); Layout.fillWidth: true }
            SupportTimeEntries {
                model: pane.task.timeEntries
                Layout.fillWidth: true
            }
        }
    }
}
