import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// Money in and money out per month as pairs of bars over a shared scale,
// drawn with plain items: the bars come two per month, money in first, and
// the tallest fills the height.
Item {
    id: chart

    required property var bars
    property real largest: 0
    readonly property color moneyIn: Theme.colours.success
    readonly property color moneyOut: Theme.colours.accent

    implicitHeight: 220

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.s

        RowLayout {
            spacing: Theme.spacing.xs
            Rectangle {
                implicitWidth: Theme.spacing.s
                implicitHeight: Theme.spacing.s
                radius: Theme.radii.small
                color: chart.moneyIn
            }
            Text {
                text: qsTr("Money in")
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
            }
            Rectangle {
                implicitWidth: Theme.spacing.s
                implicitHeight: Theme.spacing.s
                radius: Theme.radii.small
                color: chart.moneyOut
                Layout.leftMargin: Theme.spacing.m
            }
            Text {
                text: qsTr("Money out")
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
            }
        }

        Row {
            id: plot

            objectName: "monthBars"
            readonly property real slot: width / Math.max(1, bars.count)
            readonly property real labelHeight: Theme.type.caption * 1.6
            Layout.fillWidth: true
            Layout.fillHeight: true

            Repeater {
                id: bars

                model: chart.bars
                onItemAdded: (index, item) => {
                    item.width = Qt.binding(() => plot.slot)
                    item.height = Qt.binding(() => plot.height)
                    item.largest = Qt.binding(() => chart.largest)
                    item.labelHeight = Qt.binding(() => plot.labelHeight)
                    item.colour = Qt.binding(() => item.incoming ? chart.moneyIn : chart.moneyOut)
                }

                MonthBar {}
            }
        }
    }
}
