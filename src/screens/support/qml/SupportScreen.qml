import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// The support screen, one page per section: "Maintenance" is the board in
// columns by status with its views and filters, "Recurring" the recurring
// work, "Time" the logged time. The open task, or a customer's page, stands
// beside the page. It loads when it is made and stops reading when it goes
// away.
Pane {
    id: screen

    required property NativeSupportView support
    required property string section
    readonly property bool onBoard: section !== "Recurring" && section !== "Time"

    padding: 0
    background: null

    Component.onCompleted: support.appear()
    Component.onDestruction: support.disappear()

    Shortcut {
        sequence: "Ctrl+N"
        onActivated: screen.section === "Recurring" ? recurringSheet.open() : newTask.open()
    }
    Shortcut {
        sequences: ["/", "Ctrl+F"]
        enabled: screen.onBoard
        onActivated: filters.focusSearch()
    }
    Shortcut {
        sequence: "Escape"
        enabled: screen.support.task.open || screen.support.clientId.length > 0
        onActivated: screen.support.task.open ? screen.support.task.close() : screen.support.closeClient()
    }

    SupportNewTaskSheet {
        id: newTask
        support: screen.support
    }
    SupportRecurringSheet {
        id: recurringSheet
        support: screen.support
    }

    // Cards are carried above the columns while they are dragged.
    Item {
        id: dragLayer
        anchors.fill: parent
        z: 10
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.spacing.xl
        anchors.rightMargin: Theme.spacing.xl
        anchors.bottomMargin: Theme.spacing.l
        spacing: Theme.spacing.s

        SupportFilters {
            id: filters
            visible: screen.onBoard
            support: screen.support
            onNewTask: newTask.open()
            Layout.fillWidth: true
        }

        Rectangle {
            objectName: "supportTimer"
            visible: screen.support.timerTaskId.length > 0
            radius: Theme.radii.medium
            color: Theme.colours.accentSoft
            implicitHeight: timerRow.implicitHeight + Theme.spacing.s
            Layout.fillWidth: true

            RowLayout {
                id: timerRow
                anchors.fill: parent
                anchors.leftMargin: Theme.spacing.m
                anchors.rightMargin: Theme.spacing.xs
                spacing: Theme.spacing.s

                Icon {
                    symbol: "timer"
                    color: Theme.colours.accent
                }
                Label {
                    text: qsTr("Timer running on “%1”").arg(screen.support.timerTaskTitle)
                    color: Theme.colours.text
                    font.pixelSize: Theme.type.callout
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    text: screen.support.timerText
                    color: Theme.colours.accent
                    font.pixelSize: Theme.type.callout
                }
                ActionButton {
                    kind: ActionButton.Plain
                    text: qsTr("Open")
                    onClicked: screen.support.openTask(screen.support.timerTaskId)
                }
                ActionButton {
                    objectName: "stopTimer"
                    kind: ActionButton.Secondary
                    symbol: "xmark"
                    text: qsTr("Stop")
                    onClicked: screen.support.stopTimer()
                }
            }
        }

        ErrorBanner {
            visible: text.length > 0
            text: screen.support.errorText
            retryable: !screen.support.loaded || screen.support.shownCount === 0
            onRetry: screen.support.refresh()
            Layout.fillWidth: true
        }

        RowLayout {
            spacing: Theme.spacing.m
            Layout.fillWidth: true
            Layout.fillHeight: true

            LoadingPlaceholder {
                visible: !screen.support.loaded
                rows: 6
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
            }

            RowLayout {
                objectName: "supportBoard"
                visible: screen.onBoard && screen.support.loaded
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Layout.fillHeight: true

                SupportColumn {
                    support: screen.support
                    dragLayer: dragLayer
                    status: "todo"
                    title: qsTr("To do")
                    cards: screen.support.todo
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                }
                SupportColumn {
                    support: screen.support
                    dragLayer: dragLayer
                    status: "in_progress"
                    title: qsTr("In progress")
                    cards: screen.support.inProgress
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                }
                SupportColumn {
                    support: screen.support
                    dragLayer: dragLayer
                    status: "waiting"
                    title: qsTr("Waiting")
                    cards: screen.support.waiting
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                }
                SupportColumn {
                    visible: !screen.support.hideDone
                    support: screen.support
                    dragLayer: dragLayer
                    status: "done"
                    title: qsTr("Done")
                    cards: screen.support.done
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                }
            }

            SupportRecurringList {
                visible: screen.section === "Recurring" && screen.support.loaded
                support: screen.support
                onAdd: recurringSheet.open()
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            SupportTimeList {
                visible: screen.section === "Time" && screen.support.loaded
                support: screen.support
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            SupportTaskPane {
                visible: screen.support.task.open
                support: screen.support
                Layout.preferredWidth: 400
                Layout.fillHeight: true
            }

            SupportClientPane {
                visible: !screen.support.task.open && screen.support.clientId.length > 0
                support: screen.support
                Layout.preferredWidth: 360
                Layout.fillHeight: true
            }
        }
    }
}
