import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Calls
import PiloTarn.Design

// The sales screen's "Lead Generation": the prospects to reach, searched and
// narrowed by status, beside the open lead with its calls. A lead is called
// from its row; the call's progress shows under the open lead.
Pane {
    id: screen

    required property NativeCallsView calls

    padding: 0
    background: null

    Component.onCompleted: calls.appear()
    Component.onDestruction: calls.disappear()

    Shortcut {
        sequences: ["/", "Ctrl+F"]
        onActivated: search.forceActiveFocus()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Toolbar {
            title: qsTr("Lead Generation")
            subtitle: screen.calls.loaded ? screen.calls.leadSummary : ""
            Layout.fillWidth: true
        }

        ErrorBanner {
            objectName: "leadsError"
            text: screen.calls.errorText
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
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.topMargin: Theme.spacing.s
                Layout.leftMargin: Theme.spacing.xl
                Layout.rightMargin: Theme.spacing.l
                Layout.bottomMargin: Theme.spacing.l

                SearchField {
                    id: search
                    objectName: "leadsSearch"
                    placeholderText: qsTr("Search leads by name, interest, source or owner")
                    text: screen.calls.leadSearch
                    onTextChanged: screen.calls.leadSearch = text
                    Layout.fillWidth: true
                }

                LeadStatusButtons {
                    calls: screen.calls
                    Layout.fillWidth: true
                }

                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true

                    LeadList {
                        id: leads
                        objectName: "leadsList"
                        anchors.fill: parent
                        calls: screen.calls
                    }
                    LoadingPlaceholder {
                        visible: !screen.calls.loaded
                        anchors.left: parent.left
                        anchors.right: parent.right
                        rows: 8
                    }
                    EmptyState {
                        visible: screen.calls.loaded && leads.count === 0
                        anchors.fill: parent
                        symbol: "magnifyingglass"
                        title: screen.calls.totalLeads === 0 ? qsTr("No leads yet") : qsTr("No leads match")
                        text: screen.calls.totalLeads === 0
                              ? qsTr("Prospects on the leads board show here.")
                              : qsTr("Try another search or status.")
                    }
                }
            }

            Rectangle {
                implicitWidth: 1
                color: Theme.colours.separator
                Layout.fillHeight: true
            }

            ColumnLayout {
                spacing: Theme.spacing.m
                Layout.preferredWidth: 320
                Layout.maximumWidth: 320
                Layout.fillHeight: true
                Layout.topMargin: Theme.spacing.s
                Layout.leftMargin: Theme.spacing.l
                Layout.rightMargin: Theme.spacing.l
                Layout.bottomMargin: Theme.spacing.l

                LeadCard {
                    visible: screen.calls.openLeadId.length > 0
                    calls: screen.calls
                    Layout.fillWidth: true
                }
                Text {
                    visible: screen.calls.openLeadId.length === 0
                    text: qsTr("Choose a lead to see what sales knows of it and its calls.")
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.secondaryText
                    Layout.fillWidth: true
                }
                Text {
                    objectName: "leadsPlaced"
                    visible: screen.calls.placedStatus.length > 0
                    text: screen.calls.placedLabel
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.text
                    Layout.fillWidth: true
                }
                Item {
                    Layout.fillHeight: true
                }
            }
        }
    }
}
