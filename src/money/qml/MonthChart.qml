import QtQuick
import QtCharts
import PiloTarn.Design
import PiloTarn.Money

// Money in and money out per month as pairs of bars over one value axis,
// coloured and lettered from the theme so it reads in light and dark.
ChartView {
    id: chart

    required property NativeBooksDashboard dashboard
    readonly property color moneyIn: Theme.colours.success
    readonly property color moneyOut: Theme.colours.accent
    readonly property font labelFont: Qt.font({ family: Theme.textFamily, pixelSize: Theme.type.caption })

    implicitHeight: 260
    antialiasing: true
    backgroundColor: "transparent"
    plotAreaColor: "transparent"
    backgroundRoundness: 0
    margins { left: 0; right: 0; top: 0; bottom: 0 }
    legend.alignment: Qt.AlignTop
    legend.labelColor: Theme.colours.secondaryText
    legend.font: labelFont
    Accessible.role: Accessible.Chart
    Accessible.name: qsTr("Money in and out by month")

    BarSeries {
        id: series

        barWidth: 0.7
        axisX: BarCategoryAxis {
            categories: chart.dashboard.chartMonths
            labelsColor: Theme.colours.secondaryText
            labelsFont: chart.labelFont
            color: Theme.colours.separator
            gridVisible: false
        }
        // The same axis type as ValueAxis under its older name: Debian's Qt
        // 6.4 type description lists QValueAxis twice, the second time only
        // as ValuesAxis, so qmllint knows it by this name alone.
        axisY: ValuesAxis {
            min: 0
            max: chart.dashboard.chartTop
            tickCount: chart.dashboard.chartTicks
            labelFormat: chart.dashboard.chartLabelFormat
            labelsColor: Theme.colours.secondaryText
            labelsFont: chart.labelFont
            color: Theme.colours.separator
            gridLineColor: Theme.colours.separator
            minorGridVisible: false
        }

        BarSet {
            objectName: "moneyInBars"
            label: qsTr("Money in")
            values: chart.dashboard.chartIn
            color: chart.moneyIn
            borderColor: chart.moneyIn
        }
        BarSet {
            objectName: "moneyOutBars"
            label: qsTr("Money out")
            values: chart.dashboard.chartOut
            color: chart.moneyOut
            borderColor: chart.moneyOut
        }
    }
}
