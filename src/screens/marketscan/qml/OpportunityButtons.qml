import QtQuick
import PiloTarn.Design
import PiloTarn.MarketScan

// All businesses or those of one opportunity; the lit button is the one shown.
// A positioner, not a layout, holds the repeated buttons.
Row {
    required property NativeMarketScanView view

    spacing: Theme.spacing.xs

    Repeater {
        model: [{ key: "", label: qsTr("All") }, { key: "high", label: qsTr("High") },
                { key: "medium", label: qsTr("Medium") }, { key: "low", label: qsTr("Low") }]

        delegate: ActionButton {
            required property var modelData
            readonly property NativeMarketScanView view: parent ? (parent as OpportunityButtons).view : null

            objectName: "opportunity_" + (modelData.key.length > 0 ? modelData.key : "all")
            text: modelData.label
            kind: view && view.opportunity === modelData.key ? ActionButton.Primary : ActionButton.Secondary
            onClicked: view.opportunity = modelData.key
        }
    }
}
