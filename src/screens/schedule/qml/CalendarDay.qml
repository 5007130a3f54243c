import QtQuick
import PiloTarn.Design

// One day's column: its timed events as blocks from their start to their
// end. Today's column is tinted.
Rectangle {
    id: day

    required property string date
    required property bool today
    required property var events
    property real hourHeight: 44

    color: today ? Theme.colours.hover : "transparent"
    border.width: 0

    Rectangle {
        width: 1
        height: parent.height
        color: Theme.colours.separator
    }

    Repeater {
        model: day.events

        delegate: Rectangle {
            id: block

            required property var modelData
            readonly property CalendarDay day: parent as CalendarDay
            readonly property real hourHeight: day ? day.hourHeight : 44
            readonly property real offset: modelData.allDay ? 0 : modelData.start / 60 * hourHeight
            readonly property bool strong: modelData.kind === "booking" || modelData.kind === "call"
            readonly property bool google: modelData.calendar === "google"

            objectName: "calendarEvent"
            // All-day events sit under the day's heading instead.
            visible: !modelData.allDay
            x: 3
            y: offset
            width: day ? day.width - 6 : 0
            height: modelData.allDay ? 22 : Math.max(20, (modelData.end - modelData.start) / 60 * hourHeight - 2)
            radius: Theme.radii.small
            color: ({ booking: Theme.colours.accent, call: Theme.colours.success, focus: Theme.colours.raised })[
                       modelData.kind] ?? Theme.colours.accentSoft
            border.width: 1
            border.color: google ? Theme.colours.warning : Theme.colours.border
            clip: true
            Accessible.name: google ? qsTr("%1, Google Calendar").arg(modelData.title) : modelData.title

            // Events of the Google calendar carry a stripe of their own.
            Rectangle {
                visible: block.google
                width: 3
                height: parent.height
                radius: Theme.radii.small
                color: Theme.colours.warning
            }

            Column {
                x: Theme.spacing.xs
                y: 2
                width: block.width - 2 * Theme.spacing.xs

                Text {
                    width: parent.width
                    text: block.modelData.title
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.footnote
                    font.weight: Font.DemiBold
                    color: block.strong ? Theme.colours.accentText : Theme.colours.text
                }
                Text {
                    visible: block.height > 34
                    width: parent.width
                    text: [block.modelData.time, block.modelData.location, block.google ? qsTr("Google") : ""]
                          .filter(part => part.length > 0).join(" · ")
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.caption
                    color: block.strong ? Theme.colours.accentText : Theme.colours.secondaryText
                }
            }
        }
    }
}
