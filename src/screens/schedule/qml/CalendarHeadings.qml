import QtQuick
import PiloTarn.Design
import PiloTarn.Schedule

// The week's days across the top of their columns, today's in the accent,
// each with its all-day events under it.
Row {
    required property NativeScheduleView view

    Repeater {
        model: parent.view.days

        delegate: Column {
            id: heading

            required property string label
            required property bool today
            required property var events

            width: parent ? (parent as CalendarHeadings).width / 7 : 0
            bottomPadding: Theme.spacing.xs
            spacing: 2

            Text {
                width: heading.width
                height: 28
                text: heading.label
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                font.pixelSize: Theme.type.callout
                font.weight: heading.today ? Font.DemiBold : Font.Normal
                color: heading.today ? Theme.colours.accent : Theme.colours.secondaryText
            }
            Repeater {
                model: heading.events.filter(event => event.allDay)

                delegate: Rectangle {
                    required property var modelData

                    objectName: "calendarAllDay"
                    x: 3
                    width: parent ? parent.width - 6 : 0
                    height: 20
                    radius: Theme.radii.small
                    color: Theme.colours.accentSoft

                    Text {
                        anchors.fill: parent
                        anchors.leftMargin: Theme.spacing.xs
                        verticalAlignment: Text.AlignVCenter
                        text: parent.modelData.title
                        elide: Text.ElideRight
                        font.pixelSize: Theme.type.caption
                        color: Theme.colours.text
                    }
                }
            }
        }
    }
}
