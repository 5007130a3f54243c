import QtQuick
import PiloTarn.Schedule

// The month as six weeks of seven days from the Monday of the week holding
// the 1st; choosing a day opens its week.
Grid {
    id: grid

    required property NativeScheduleView view
    readonly property real cellWidth: width / 7
    readonly property real cellHeight: height / 6

    columns: 7

    Repeater {
        model: grid.view.month

        delegate: CalendarMonthDay {
            readonly property CalendarMonth grid: parent as CalendarMonth

            width: grid ? grid.cellWidth : 0
            height: grid ? grid.cellHeight : 0
            onChosen: day => grid.view.openDay(day)
        }
    }
}
