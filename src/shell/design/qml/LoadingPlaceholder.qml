import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// Grey bars where rows will be while the first answer is on its way, with a
// slow pulse, so a loading list keeps its shape instead of jumping. `rows`
// is how many to draw, each with a round mark at its lead.
ColumnLayout {
    id: placeholder

    property int rows: 3

    spacing: Theme.spacing.m
    Accessible.role: Accessible.Indicator
    Accessible.name: qsTr("Loading")

    SequentialAnimation on opacity {
        running: placeholder.visible
        loops: Animation.Infinite
        NumberAnimation { from: 1; to: 0.45; duration: 700; easing.type: Easing.InOutQuad }
        NumberAnimation { from: 0.45; to: 1; duration: 700; easing.type: Easing.InOutQuad }
    }

    Repeater {
        model: placeholder.rows

        RowLayout {
            id: line

            required property int index

            spacing: Theme.spacing.m
            Layout.fillWidth: true
            Rectangle {
                implicitWidth: 32
                implicitHeight: 32
                radius: 16
                color: Theme.colours.pressed
            }
            ColumnLayout {
                spacing: Theme.spacing.xs + 2
                Layout.fillWidth: true
                // Bars of differing lengths read as text.
                Rectangle {
                    implicitHeight: 10
                    radius: 5
                    color: Theme.colours.pressed
                    Layout.fillWidth: true
                    Layout.rightMargin: 80 + 30 * (line.index % 3)
                }
                Rectangle {
                    implicitHeight: 10
                    radius: 5
                    color: Theme.colours.hover
                    Layout.fillWidth: true
                    Layout.rightMargin: 20 * (line.index % 2)
                }
            }
        }
    }
}
