import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Portals
import PiloTarn.Design

// The portals screen: the open alerts and every client's portal on the
// left, the chosen portal beside them. It loads when it is made.
Pane {
    id: screen

    required property NativePortalsView portals

    padding: 0
    background: null

    Component.onCompleted: portals.refresh()

    Shortcut {
        sequence: "Escape"
        onActivated: screen.portals.closePortal()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ErrorBanner {
            objectName: "portalsError"
            text: screen.portals.errorText
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.s
        }

        RowLayout {
            spacing: 0
            Layout.fillWidth: true
            Layout.fillHeight: true

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.preferredWidth: 340
                Layout.maximumWidth: 340
                Layout.fillHeight: true
                Layout.leftMargin: Theme.spacing.xl
                Layout.rightMargin: Theme.spacing.l
                Layout.bottomMargin: Theme.spacing.l

                SectionHeader {
                    text: qsTr("Alerts")
                    Layout.fillWidth: true
                }
                PortalAlertList {
                    id: alertList
                    objectName: "portalAlerts"
                    portals: screen.portals
                    Layout.fillWidth: true
                    Layout.preferredHeight: Math.min(contentHeight, 220)
                }
                Label {
                    visible: screen.portals.loaded && alertList.count === 0
                    text: qsTr("No open alerts.")
                    color: Theme.colours.secondaryText
                }

                SectionHeader {
                    text: qsTr("Portals")
                    Layout.fillWidth: true
                }
                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true

                    PortalAccountList {
                        objectName: "portalAccounts"
                        anchors.fill: parent
                        portals: screen.portals
                    }
                    LoadingPlaceholder {
                        visible: !screen.portals.loaded
                        anchors.left: parent.left
                        anchors.right: parent.right
                        rows: 6
                    }
                }
            }

            Rectangle {
                implicitWidth: 1
                color: Theme.colours.separator
                Layout.fillHeight: true
            }

            Item {
                Layout.fillWidth: true
                Layout.fillHeight: true

                PortalPane {
                    visible: screen.portals.openClientId.length > 0
                    anchors.fill: parent
                    portals: screen.portals
                }
                EmptyState {
                    visible: screen.portals.openClientId.length === 0
                    anchors.fill: parent
                    symbol: "person.2.crop.square.stack"
                    title: qsTr("No portal open")
                    text: qsTr("Choose a client to see their portal's people, keys, reports and work.")
                }
            }
        }
    }
}
