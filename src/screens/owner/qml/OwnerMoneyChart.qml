import QtQuick
import QtCharts
import PiloTarn.Design
import PiloTarn.Owner

// Money in and out of last month and this one, drawn as the books' chart is
// so that the two read alike in light and dark.
ChartView {
    id: chart

    required property NativeOwnerView view
    readonly property color moneyIn: Theme.colours.success
    readonly property color moneyOut: Theme.colours.accent
    readonly property font labelFont: Qt.font({ family: Theme.textFamily, pixelSize: Theme.type.caption })

    implicitHeight: 220
    antialiasing: true
    backgroundColor: "transparent"
    plotAreaColor: "transparent"
    backgroundRoundness: 0
    margins { left: 0; right: 0; top: 0; bottom: 0 }
    legend.alignment: Qt.AlignTop
    legend.labelColor: Theme.colours.secondaryText
    legend.font: labelFont
    Accessible.role: Accessible.Chart
    Accessible.name: qsTr("Money in and out, last month and this")

    BarSeries {
        barWidth: 0.6
        axisX: BarCategoryAxis {
            categories: chart.view.chartMonths
            labelsColor: Theme.colours.secondaryText
            labelsFont: chart.labelFont
            color: Theme.colours.separator
            gridVisible: false
        }
        // ValuesAxis: the name under which qmllint knows Qt 6.4's value axis.
        axisY: ValuesAxis {
            min: 0
            max: chart.view.chartTop
            tickCount: chart.view.chartTicks
            labelFormat: chart.view.chartLabelFormat
            labelsColor: Theme.colours.secondaryText
            labelsFont: chart.labelFont
            color: Theme.colours.separator
            gridLineColor: Theme.colours.separator
            minorGridVisible: false
        }

        BarSet {
            label: qsTr("Money in")
            values: chart.view.chartIn
            color: chart.moneyIn
            borderColor: chart.moneyIn
        }
        BarSet {
            label: qsTr("Money out")
            values: chart.view.chartOut
            color: chart.moneyOut
            borderColor: chart.moneyOut
        }
    }
}
