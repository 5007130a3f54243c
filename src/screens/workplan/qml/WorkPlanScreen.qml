import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.WorkPlan
import PiloTarn.Design

// The work plan: one week of the team's planned work. The team on the left
// chooses whose entries show; the week moves with the arrows. It loads when
// it is made and reads the week again every minute while it is shown.
Pane {
    id: screen

    required property NativeWorkPlanView view
    // Owners and managers plan for anyone, everyone else for themselves.
    readonly property bool plansForChosen: view.mayCoach || view.person.length === 0 || view.person === view.myId

    padding: 0
    background: null

    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    Shortcut {
        sequence: "Ctrl+N"
        enabled: screen.plansForChosen
        onActivated: form.openNew()
    }
    Shortcut {
        sequence: "Escape"
        enabled: form.visible
        onActivated: form.close()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.spacing.xl
        anchors.rightMargin: Theme.spacing.xl
        anchors.bottomMargin: Theme.spacing.l
        spacing: Theme.spacing.s

        Toolbar {
            title: screen.view.weekLabel
            subtitle: screen.view.planned > 0 ? qsTr("%1 of %2 done").arg(screen.view.done).arg(screen.view.planned) : ""
            Layout.fillWidth: true

            IconButton {
                objectName: "previousWeek"
                symbol: "chevron.left"
                text: qsTr("Previous week")
                onClicked: screen.view.previousWeek()
            }
            ActionButton {
                objectName: "thisWeek"
                text: qsTr("This week")
                enabled: !screen.view.thisWeek
                onClicked: screen.view.showThisWeek()
            }
            IconButton {
                objectName: "nextWeek"
                symbol: "chevron.right"
                text: qsTr("Next week")
                onClicked: screen.view.nextWeek()
            }
            ActionButton {
                objectName: "newEntry"
                kind: ActionButton.Primary
                symbol: "plus"
                text: qsTr("New (Ctrl+N)")
                enabled: screen.plansForChosen
                onClicked: form.openNew()
            }
        }

        ErrorBanner {
            objectName: "workPlanError"
            text: screen.view.errorText
            Layout.fillWidth: true
        }

        RowLayout {
            spacing: Theme.spacing.l
            Layout.fillWidth: true
            Layout.fillHeight: true

            WorkPeopleList {
                view: screen.view
                Layout.preferredWidth: 240
                Layout.fillHeight: true
            }

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Layout.fillHeight: true

                WorkEntryForm {
                    id: form
                    view: screen.view
                    visible: false
                    Layout.fillWidth: true
                }

                LoadingPlaceholder {
                    visible: screen.view.loading
                    rows: 8
                    Layout.fillWidth: true
                }

                WorkEntryList {
                    visible: !screen.view.loading
                    view: screen.view
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    onEditRequested: (entryId, title, day, notes) => form.openEdit(entryId, title, day, notes)
                }

                CoachNotes {
                    visible: !screen.view.loading && screen.view.person.length > 0
                             && (screen.view.mayCoach || screen.view.person === screen.view.myId)
                    view: screen.view
                    Layout.fillWidth: true
                    Layout.preferredHeight: Math.min(implicitHeight, screen.height / 3)
                }
            }
        }
    }
}
