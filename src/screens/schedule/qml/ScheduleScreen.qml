import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Schedule

// The schedule screen: "Calendar", the week or the month of events moved a
// week or a month at a time (Alt+Left and Alt+Right, Alt+Home back to
// today), and "Booking links", the links clients book time through. It loads
// when it is made and stops refreshing when it goes away.
Pane {
    id: screen

    required property NativeScheduleView view
    property string section: "Calendar"
    readonly property bool linksShown: section === "Booking links"
    readonly property bool monthShown: view.mode === "Month"

    padding: 0
    background: null

    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    Shortcut {
        sequence: "Ctrl+N"
        enabled: !screen.linksShown && screen.view.googleConnected
        onActivated: newEvent.open()
    }
    Shortcut {
        sequence: "Alt+Left"
        enabled: !screen.linksShown
        onActivated: screen.monthShown ? screen.view.previousMonth() : screen.view.previousWeek()
    }
    Shortcut {
        sequence: "Alt+Right"
        enabled: !screen.linksShown
        onActivated: screen.monthShown ? screen.view.nextMonth() : screen.view.nextWeek()
    }
    Shortcut {
        sequence: "Alt+Home"
        enabled: !screen.linksShown
        onActivated: screen.monthShown ? screen.view.thisMonth() : screen.view.thisWeek()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Toolbar {
            title: screen.linksShown ? qsTr("Booking links")
                                     : screen.monthShown ? screen.view.monthLabel : screen.view.weekLabel
            subtitle: screen.linksShown || screen.view.notice.length > 0 ? screen.view.notice
                                        : !screen.view.loaded ? ""
                                        : screen.view.eventCount === 1 ? qsTr("1 event")
                                        : qsTr("%1 events").arg(screen.view.eventCount)
            Layout.fillWidth: true

            ActionButton {
                objectName: "scheduleNewEvent"
                visible: !screen.linksShown && screen.view.googleConnected
                symbol: "plus"
                text: qsTr("New event")
                onClicked: newEvent.open()
            }
            Row {
                visible: !screen.linksShown

                ActionButton {
                    objectName: "scheduleWeekMode"
                    kind: screen.monthShown ? ActionButton.Secondary : ActionButton.Primary
                    text: qsTr("Week")
                    Accessible.checkable: true
                    Accessible.checked: !screen.monthShown
                    onClicked: screen.view.mode = "Week"
                }
                ActionButton {
                    objectName: "scheduleMonthMode"
                    kind: screen.monthShown ? ActionButton.Primary : ActionButton.Secondary
                    text: qsTr("Month")
                    Accessible.checkable: true
                    Accessible.checked: screen.monthShown
                    onClicked: screen.view.mode = "Month"
                }
            }
            IconButton {
                objectName: "schedulePrevious"
                visible: !screen.linksShown
                symbol: "chevron.left"
                text: screen.monthShown ? qsTr("Previous month (Alt+Left)") : qsTr("Previous week (Alt+Left)")
                onClicked: screen.monthShown ? screen.view.previousMonth() : screen.view.previousWeek()
            }
            ActionButton {
                objectName: "scheduleToday"
                visible: !screen.linksShown
                enabled: screen.monthShown ? !screen.view.thisMonthShown : !screen.view.thisWeekShown
                text: screen.monthShown ? qsTr("This month") : qsTr("This week")
                onClicked: screen.monthShown ? screen.view.thisMonth() : screen.view.thisWeek()
            }
            IconButton {
                objectName: "scheduleNext"
                visible: !screen.linksShown
                symbol: "chevron.right"
                text: screen.monthShown ? qsTr("Next month (Alt+Right)") : qsTr("Next week (Alt+Right)")
                onClicked: screen.monthShown ? screen.view.nextMonth() : screen.view.nextWeek()
            }
        }

        Text {
            objectName: "calendarNote"
            visible: !screen.linksShown && screen.view.loaded && text.length > 0
            text: screen.view.calendarNote
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.tertiaryText
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.s
        }

        ErrorBanner {
            objectName: "scheduleError"
            text: newEvent.opened ? "" : screen.view.errorText
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
            visible: screen.view.loaded && !screen.linksShown && !screen.monthShown
            view: screen.view
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.l
            Layout.rightMargin: Theme.spacing.l
            Layout.bottomMargin: Theme.spacing.l
        }

        CalendarMonth {
            objectName: "calendarMonth"
            visible: screen.view.loaded && !screen.linksShown && screen.monthShown
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

    NewEventSheet {
        id: newEvent
        objectName: "newEventSheet"
        view: screen.view
    }
}
