import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.MarketScan

// The recent scans, newest first; the open one is lit.
ListView {
    required property NativeMarketScanView view

    model: view.scans
    clip: true
    spacing: 2
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        required property string scanId
        required property string title
        required property string summary
        readonly property MarketScanList list: ListView.view as MarketScanList

        objectName: "scanRow"
        width: ListView.view.width
        text: title
        subtitle: summary
        symbol: "scope"
        lit: list !== null && list.view.openScanId === scanId
        onClicked: list.view.openScan(scanId)
    }
}
