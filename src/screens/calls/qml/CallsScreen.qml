import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Calls
import PiloTarn.Design

// The calls screen's "Calls" and "Recordings" sections. Calls: the book with
// its filters and search beside the dialer and the leads to call.
// Recordings: the recorded calls. The player bar sits at the foot of both
// while a recording is loaded. It loads when it is made and stops
// refreshing when it goes away.
Pane {
    id: screen

    required property NativeCallsView calls
    property string section: "Calls"
    readonly property bool recordingsShown: section === "Recordings"

    padding: 0
    background: null

    Component.onCompleted: calls.appear()
    Component.onDestruction: calls.disappear()

    Shortcut {
        sequences: ["/", "Ctrl+F"]
        onActivated: search.forceActiveFocus()
    }
    Shortcut {
        sequence: "Ctrl+N"
        onActivated: dialer.focusNumber()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ErrorBanner {
            objectName: "callsError"
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
                Layout.leftMargin: Theme.spacing.xl
                Layout.rightMargin: Theme.spacing.l
                Layout.bottomMargin: Theme.spacing.l

                RowLayout {
                    spacing: Theme.spacing.s
                    Layout.fillWidth: true

                    SearchField {
                        id: search
                        objectName: "callsSearch"
                        placeholderText: qsTr("Search calls")
                        text: screen.calls.search
                        onTextChanged: screen.calls.search = text
                        Layout.fillWidth: true
                    }
                    ActionButton {
                        objectName: "callsFilter_all"
                        visible: !screen.recordingsShown
                        text: qsTr("All")
                        kind: screen.calls.filter === "all" ? ActionButton.Primary : ActionButton.Secondary
                        onClicked: screen.calls.filter = "all"
                    }
                    ActionButton {
                        objectName: "callsFilter_in"
                        visible: !screen.recordingsShown
                        text: qsTr("In")
                        kind: screen.calls.filter === "in" ? ActionButton.Primary : ActionButton.Secondary
                        onClicked: screen.calls.filter = "in"
                    }
                    ActionButton {
                        objectName: "callsFilter_out"
                        visible: !screen.recordingsShown
                        text: qsTr("Out")
                        kind: screen.calls.filter === "out" ? ActionButton.Primary : ActionButton.Secondary
                        onClicked: screen.calls.filter = "out"
                    }
                    ActionButton {
                        objectName: "callsFilter_missed"
                        visible: !screen.recordingsShown
                        text: qsTr("Missed")
                        kind: screen.calls.filter === "missed" ? ActionButton.Primary : ActionButton.Secondary
                        onClicked: screen.calls.filter = "missed"
                    }
                }

                // The table stays in the layout while it loads or shows
                // nothing; the placeholder and the empty state lie over it.
                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true

                    CallBookTable {
                        id: book
                        objectName: "callBook"
                        anchors.fill: parent
                        calls: screen.calls
                        model: screen.recordingsShown ? screen.calls.recordings : screen.calls.calls
                    }
                    LoadingPlaceholder {
                        visible: !screen.calls.loaded
                        anchors.left: parent.left
                        anchors.right: parent.right
                        rows: 8
                    }
                    EmptyState {
                        visible: screen.calls.loaded && book.count === 0
                        anchors.fill: parent
                        symbol: screen.recordingsShown ? "waveform" : "phone"
                        title: screen.recordingsShown ? qsTr("No recordings") : qsTr("No calls")
                        text: screen.calls.search.length > 0 ? qsTr("Nothing matches \u201c%1\u201d.").arg(screen.calls.search)
                                                             : qsTr("Calls show here as they are made.")
                    }
                }
            }

            Rectangle {
                visible: !screen.recordingsShown
                implicitWidth: 1
                color: Theme.colours.separator
                Layout.fillHeight: true
            }

            ColumnLayout {
                visible: !screen.recordingsShown
                spacing: Theme.spacing.m
                Layout.preferredWidth: 280
                Layout.maximumWidth: 280
                Layout.fillHeight: true
                Layout.leftMargin: Theme.spacing.l
                Layout.rightMargin: Theme.spacing.l
                Layout.bottomMargin: Theme.spacing.l

                CallDialer {
                    id: dialer
                    calls: screen.calls
                    Layout.fillWidth: true
                }

                SectionHeader {
                    text: qsTr("Leads to call")
                    Layout.fillWidth: true
                }

                LeadCard {
                    visible: screen.calls.openLeadId.length > 0
                    calls: screen.calls
                    Layout.fillWidth: true
                }

                LeadList {
                    calls: screen.calls
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }
        }

        CallPlayerBar {
            visible: screen.calls.player.callId.length > 0
            player: screen.calls.player
            Layout.fillWidth: true
        }
    }
}
