import QtQuick
import PiloTarn.Design

// One day of the month grid: its number (the weekday above it in the first
// week), how many events it holds and the first of their titles. Days of
// the months beside are dimmed, today is in the accent.
Rectangle {
    id: cell

    required property int index
    required property string date
    required property string weekday
    required property int number
    required property bool inMonth
    required property bool today
    required property int count
    required property var titles

    signal chosen(string day)

    objectName: "monthDay"
    color: mouse.containsMouse ? Theme.colours.hover : "transparent"
    border.width: 1
    border.color: Theme.colours.separator
    opacity: inMonth ? 1 : 0.5
    Accessible.role: Accessible.Button
    Accessible.name: count === 1 ? qsTr("%1, 1 event").arg(date) : qsTr("%1, %2 events").arg(date).arg(count)

    Column {
        x: Theme.spacing.xs
        y: Theme.spacing.xs
        width: cell.width - 2 * Theme.spacing.xs
        height: cell.height - 2 * Theme.spacing.xs
        spacing: 2
        clip: true

        Text {
            visible: cell.index < 7
            text: cell.weekday
            font.pixelSize: Theme.type.caption
            color: Theme.colours.tertiaryText
        }
        Item {
            width: parent.width
            height: dayNumber.implicitHeight

            Rectangle {
                visible: cell.today
                anchors.centerIn: dayNumber
                width: Math.max(dayNumber.implicitWidth + 8, dayNumber.implicitHeight + 2)
                height: dayNumber.implicitHeight + 2
                radius: height / 2
                color: Theme.colours.accent
            }
            Text {
                id: dayNumber
                x: 4
                text: cell.number
                font.pixelSize: Theme.type.callout
                font.weight: cell.today ? Font.DemiBold : Font.Normal
                color: cell.today ? Theme.colours.accentText : Theme.colours.text
            }
            CountBadge {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                count: cell.count
                muted: true
            }
        }
        Repeater {
            model: cell.titles

            // The Google calendar's events carry its stripe, as in the week.
            delegate: Row {
                id: line

                required property var modelData
                readonly property bool google: modelData.calendar === "google"

                width: parent ? parent.width : 0
                spacing: 3

                Rectangle {
                    visible: line.google
                    width: 3
                    height: title.implicitHeight
                    radius: 1
                    color: Theme.colours.warning
                }
                Text {
                    id: title
                    width: line.width - (line.google ? 6 : 0)
                    text: line.modelData.title
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.caption
                    color: Theme.colours.secondaryText
                }
            }
        }
        Text {
            visible: cell.count > cell.titles.length
            text: qsTr("%1 more").arg(cell.count - cell.titles.length)
            font.pixelSize: Theme.type.caption
            color: Theme.colours.tertiaryText
        }
    }

    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: cell.chosen(cell.date)
    }
}
