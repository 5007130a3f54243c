import QtQuick
import PiloTarn.Schedule

// The week's seven day columns side by side.
Row {
    required property NativeScheduleView view
    property real hourHeight: 44

    Repeater {
        model: parent.view.days

        delegate: CalendarDay {
            readonly property CalendarColumns columns: parent as CalendarColumns

            width: columns ? columns.width / 7 : 0
            height: columns ? columns.height : 0
            hourHeight: columns ? columns.hourHeight : 44
        }
    }
}
