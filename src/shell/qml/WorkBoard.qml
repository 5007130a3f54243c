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

    // A delegate sees only its own roles, so tiles and their suggestions
    // signal, and the repeater that made them connects the signals.
    component Tile: Frame {
        id: tile

        required property int index
        required property string key
        required property string label
        required property string symbol
        required property bool opens
        required property list<string> prompts

        signal openRequested()
        signal promptChosen(string prompt)

        objectName: "boardTile:" + key
        Layout.fillWidth: true
        Layout.alignment: Qt.AlignTop
        padding: 14
        background: Rectangle {
            radius: 10
            color: tile.palette.base
            border.color: Qt.rgba(tile.palette.windowText.r, tile.palette.windowText.g,
                                  tile.palette.windowText.b, 0.12)
        }

        ColumnLayout {
            anchors.fill: parent
            spacing: 8

            RowLayout {
                spacing: 10
                SymbolBadge { label: tile.label; symbol: tile.symbol }
                Label {
                    text: tile.label
                    font.weight: Font.DemiBold
                    Layout.fillWidth: true
                }
                Button {
                    visible: tile.opens
                    text: qsTr("Open")
                    flat: true
                    onClicked: tile.openRequested()
                }
            }

            Repeater {
                model: tile.prompts
                onItemAdded: (index, item) => item.clicked.connect(() => tile.promptChosen(tile.prompts[index]))

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
                               ? Qt.rgba(prompt.palette.highlight.r, prompt.palette.highlight.g,
                                         prompt.palette.highlight.b, 0.10)
                               : Qt.rgba(prompt.palette.windowText.r, prompt.palette.windowText.g,
                                         prompt.palette.windowText.b, 0.04)
                    }
                }
            }
        }
    }

    ColumnLayout {
        width: board.availableWidth
        spacing: 16

        TextArea {
            id: draft

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
                color: draft.palette.base
                border.color: draft.activeFocus ? draft.palette.highlight
                            : Qt.rgba(draft.palette.windowText.r, draft.palette.windowText.g,
                                      draft.palette.windowText.b, 0.18)
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
                onItemAdded: (index, item) => {
                    item.openRequested.connect(() => board.navigation.workBoard.open(item.index))
                    item.promptChosen.connect(prompt => board.navigation.pendingAgentDraft = prompt)
                }

                Tile {}
            }
        }
    }
}
