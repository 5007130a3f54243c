import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell

// The home page's work board: a tile per kind of work the person may do,
// each with suggestions for Pilo. A suggestion goes to Pilo's composer; a
// tile with its own page opens it.
ScrollView {
    id: board

    required property TarnNavigation navigation

    contentWidth: availableWidth
    clip: true

    ColumnLayout {
        width: board.availableWidth
        spacing: 16

        TextArea {
            objectName: "agentDraft"
            text: board.navigation.pendingAgentDraft
            placeholderText: qsTr("Ask Pilo to do something…")
            wrapMode: TextEdit.Wrap
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.minimumHeight: 64
            background: Rectangle {
                radius: 10
                color: palette.base
                border.color: parent.activeFocus ? palette.highlight
                            : Qt.rgba(palette.windowText.r, palette.windowText.g, palette.windowText.b, 0.18)
            }
            onTextChanged: if (text !== board.navigation.pendingAgentDraft) board.navigation.pendingAgentDraft = text
        }

        Label {
            text: qsTr("Sending to Pilo arrives in a later version of Pilo Tarn; your draft is kept until then.")
            visible: board.navigation.pendingAgentDraft.length > 0
            wrapMode: Text.Wrap
            opacity: 0.6
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
        }

        GridLayout {
            objectName: "workBoard"
            columns: Math.max(1, Math.floor((board.availableWidth - 48) / 280))
            columnSpacing: 12
            rowSpacing: 12
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.bottomMargin: 24

            Repeater {
                model: board.navigation.workBoard

                Frame {
                    id: tile

                    required property var modelData
                    objectName: "boardTile:" + modelData.key
                    Layout.fillWidth: true
                    Layout.alignment: Qt.AlignTop
                    padding: 14
                    background: Rectangle {
                        radius: 10
                        color: palette.base
                        border.color: Qt.rgba(palette.windowText.r, palette.windowText.g, palette.windowText.b, 0.12)
                    }

                    ColumnLayout {
                        anchors.fill: parent
                        spacing: 8

                        RowLayout {
                            spacing: 10
                            SymbolBadge { label: tile.modelData.label; symbol: tile.modelData.symbol }
                            Label {
                                text: tile.modelData.label
                                font.weight: Font.DemiBold
                                Layout.fillWidth: true
                            }
                            Button {
                                visible: tile.modelData.open !== undefined
                                text: qsTr("Open")
                                flat: true
                                onClicked: board.navigation.open(tile.modelData.open)
                            }
                        }

                        Repeater {
                            model: tile.modelData.prompts

                            ItemDelegate {
                                id: prompt

                                required property string modelData
                                text: modelData
                                Layout.fillWidth: true
                                topPadding: 6
                                bottomPadding: 6
                                contentItem: Label {
                                    text: prompt.text
                                    wrapMode: Text.Wrap
                                    opacity: 0.85
                                }
                                background: Rectangle {
                                    radius: 6
                                    color: prompt.hovered
                                           ? Qt.rgba(palette.highlight.r, palette.highlight.g, palette.highlight.b, 0.10)
                                           : Qt.rgba(palette.windowText.r, palette.windowText.g, palette.windowText.b, 0.04)
                                }
                                onClicked: board.navigation.pendingAgentDraft = modelData
                            }
                        }
                    }
                }
            }
        }
    }
}
