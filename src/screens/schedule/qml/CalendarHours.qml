import QtQuick
import PiloTarn.Design

// The hour lines of a day with their times in the gutter at the start.
Column {
    property real hourHeight: 44
    property real gutter: 48

    Repeater {
        model: 24

        delegate: Item {
            id: hour

            required property int index
            readonly property CalendarHours hours: parent as CalendarHours

            width: hours ? hours.width : 0
            height: hours ? hours.hourHeight : 0

            Text {
                width: hour.hours ? hour.hours.gutter - Theme.spacing.s : 0
                horizontalAlignment: Text.AlignRight
                text: ("0" + hour.index).slice(-2) + ":00"
                font.pixelSize: Theme.type.caption
                color: Theme.colours.tertiaryText
            }
            Rectangle {
                x: hour.hours ? hour.hours.gutter : 0
                width: parent.width - x
                height: 1
                color: Theme.colours.separator
            }
        }
    }
}
