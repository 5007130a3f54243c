import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.MarketScan

// The market scan: a trade and an area scanned for the businesses there and
// how much the company could do for each; the recent scans beside the open
// one's businesses, narrowed by opportunity and ordered in place.
Pane {
    id: screen

    required property NativeMarketScanView view

    padding: 0
    background: null

    Component.onCompleted: view.appear()

    Shortcut {
        sequence: "Ctrl+N"
        onActivated: trade.input.forceActiveFocus()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Toolbar {
            title: screen.view.openScanTitle.length > 0 ? screen.view.openScanTitle : qsTr("Market Scan")
            subtitle: screen.view.scanning ? qsTr("Scanning…") : screen.view.openScanSummary
            Layout.fillWidth: true
        }

        ErrorBanner {
            objectName: "marketScanError"
            text: screen.view.errorText
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.s
        }

        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.m

            FormField {
                id: trade
                objectName: "scanTrade"
                placeholderText: qsTr("Trade, e.g. dentists")
                text: screen.view.trade
                onTextChanged: screen.view.trade = text
                onAccepted: screen.view.scan()
                Layout.fillWidth: true
            }
            FormField {
                objectName: "scanArea"
                placeholderText: qsTr("Area, e.g. Portland, OR")
                text: screen.view.area
                onTextChanged: screen.view.area = text
                onAccepted: screen.view.scan()
                Layout.fillWidth: true
            }
            ActionButton {
                objectName: "scanRun"
                kind: ActionButton.Primary
                symbol: "scope"
                text: screen.view.scanning ? qsTr("Scanning…") : qsTr("Scan")
                enabled: screen.view.canScan
                onClicked: screen.view.scan()
            }
        }

        RowLayout {
            spacing: 0
            Layout.fillWidth: true
            Layout.fillHeight: true

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.preferredWidth: 280
                Layout.maximumWidth: 280
                Layout.fillHeight: true
                Layout.leftMargin: Theme.spacing.l
                Layout.rightMargin: Theme.spacing.m
                Layout.bottomMargin: Theme.spacing.l

                SectionHeader {
                    text: qsTr("Recent scans")
                    Layout.fillWidth: true
                }
                MarketScanList {
                    objectName: "scanList"
                    view: screen.view
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }

            Rectangle {
                implicitWidth: 1
                color: Theme.colours.separator
                Layout.fillHeight: true
            }

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.leftMargin: Theme.spacing.l
                Layout.rightMargin: Theme.spacing.xl
                Layout.bottomMargin: Theme.spacing.l

                RowLayout {
                    visible: screen.view.openScanId.length > 0
                    spacing: Theme.spacing.s
                    Layout.fillWidth: true

                    OpportunityButtons {
                        view: screen.view
                        Layout.fillWidth: true
                    }
                    ComboBox {
                        objectName: "scanSort"
                        textRole: "label"
                        valueRole: "key"
                        model: [{ key: "opportunity", label: qsTr("Opportunity") },
                                { key: "rating", label: qsTr("Rating") },
                                { key: "distance", label: qsTr("Distance") },
                                { key: "name", label: qsTr("Name") }]
                        onActivated: screen.view.sortKey = currentValue
                        Component.onCompleted: currentIndex = indexOfValue(screen.view.sortKey)
                    }
                }

                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true

                    MarketBusinessList {
                        id: businesses
                        objectName: "businessList"
                        anchors.fill: parent
                        view: screen.view
                    }
                    LoadingPlaceholder {
                        visible: !screen.view.loaded || screen.view.scanning
                        anchors.left: parent.left
                        anchors.right: parent.right
                        rows: 8
                    }
                    EmptyState {
                        visible: screen.view.loaded && !screen.view.scanning && businesses.count === 0
                        anchors.fill: parent
                        symbol: "scope"
                        title: screen.view.openScanId.length > 0 ? qsTr("Nothing here") : qsTr("No scans yet")
                        text: screen.view.openScanId.length > 0
                              ? qsTr("No business of this opportunity turned up.")
                              : qsTr("Scan a trade in an area to see who is there and what they lack.")
                    }
                }
            }
        }
    }
}
