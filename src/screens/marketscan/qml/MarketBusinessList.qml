import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.MarketScan

// The open scan's businesses: where they are, their rating and site, and
// what the company could do for them.
ListView {
    required property NativeMarketScanView view

    model: view.businesses
    clip: true
    spacing: 2
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        required property string name
        required property string place
        required property string rating
        required property string site
        required property string opportunity
        required property string reasons

        objectName: "businessRow"
        width: ListView.view.width
        text: name
        subtitle: reasons.length > 0 ? qsTr("%1 · %2 · %3").arg(place).arg(site).arg(reasons)
                                     : qsTr("%1 · %2").arg(place).arg(site)
        detail: rating
        symbol: ({ high: "flame", medium: "chart.line.uptrend.xyaxis" })[opportunity] ?? "checkmark"
        dot: opportunity === "high"
    }
}
