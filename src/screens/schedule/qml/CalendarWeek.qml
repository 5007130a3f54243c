import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Schedule

// The week as seven columns under their days, events placed by their
// wall-clock times on an hour grid that opens at 08:00; all-day events sit
// at the top of their day.
Item {
    id: week

    required property NativeScheduleView view
    readonly property real gutter: 48
    readonly property real hourHeight: 44

    CalendarHeadings {
        id: headings
        x: week.gutter
        width: week.width - week.gutter
        view: week.view
    }

    Flickable {
        id: hours
        anchors.top: headings.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        contentHeight: 24 * week.hourHeight
        contentY: 8 * week.hourHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        CalendarHours {
            width: hours.width
            hourHeight: week.hourHeight
            gutter: week.gutter
        }

        CalendarColumns {
            x: week.gutter
            width: hours.width - week.gutter
            height: hours.contentHeight
            view: week.view
            hourHeight: week.hourHeight
        }
    }

    EmptyState {
        visible: week.view.loaded && week.view.eventCount === 0
        anchors.centerIn: parent
        symbol: "calendar"
        title: qsTr("Nothing this week")
        text: qsTr("Meetings, calls and bookings show here.")
    }
}
