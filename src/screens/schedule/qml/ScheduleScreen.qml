import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Schedule

// The schedule screen: "Calendar", the week of events moved a week at a time
// (Alt+Left and Alt+Right, Alt+Home for this week), and "Booking links", the
// links clients book time through. It loads when it is made and stops
// refreshing when it goes away.
Pane {
    id: screen

    required property NativeScheduleView view
    property string section: "Calendar"
    readonly property bool linksShown: section === "Booking links"

    padding: 0
    background: null

    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    Shortcut {
        sequence: "Alt+Left"
        enabled: !screen.linksShown
        onActivated: screen.view.previousWeek()
    }
    Shortcut {
        sequence: "Alt+Right"
        enabled: !screen.linksShown
        onActivated: screen.view.nextWeek()
    }
    Shortcut {
        sequence: "Alt+Home"
        enabled: !screen.linksShown
        onActivated: screen.view.thisWeek()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Toolbar {
            title: screen.linksShown ? qsTr("Booking links") : screen.view.weekLabel
            subtitle: screen.linksShown ? screen.view.notice
                                        : !screen.view.loaded ? ""
                                        : screen.view.eventCount === 1 ? qsTr("1 event")
                                        : qsTr("%1 events").arg(screen.view.eventCount)
            Layout.fillWidth: true

            IconButton {
                objectName: "schedulePrevious"
                visible: !screen.linksShown
                symbol: "chevron.left"
                text: qsTr("Previous week (Alt+Left)")
                onClicked: screen.view.previousWeek()
            }
            ActionButton {
                objectName: "scheduleToday"
                visible: !screen.linksShown
                enabled: !screen.view.thisWeekShown
                text: qsTr("This week")
                onClicked: screen.view.thisWeek()
            }
            IconButton {
                objectName: "scheduleNext"
                visible: !screen.linksShown
                symbol: "chevron.right"
                text: qsTr("Next week (Alt+Right)")
                onClicked: screen.view.nextWeek()
            }
        }

        ErrorBanner {
            objectName: "scheduleError"
            text: screen.view.errorText
            retryable: true
            onRetry: screen.view.refresh()
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.s
        }

        LoadingPlaceholder {
            visible: !screen.view.loaded
            rows: 6
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
        }

        CalendarWeek {
            objectName: "calendarWeek"
            visible: screen.view.loaded && !screen.linksShown
            view: screen.view
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.l
            Layout.rightMargin: Theme.spacing.l
            Layout.bottomMargin: Theme.spacing.l
        }

        BookingLinks {
            objectName: "bookingLinks"
            visible: screen.view.loaded && screen.linksShown
            view: screen.view
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
