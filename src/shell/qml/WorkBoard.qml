import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell
import PiloTarn.Design
import PiloTarn.Assistant

// The home page's work board: a tile per kind of work the person may do,
// each with suggestions for Pilo. A suggestion goes to Pilo's composer; a
// tile with its own page opens it.
ScrollView {
    id: board

    required property TarnNavigation navigation
    required property TarnPiloConversation pilo

    contentWidth: availableWidth
    // Whether sending is open shows beside the draft, so it is loaded here.
    onVisibleChanged: if (visible) pilo.reload()
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
        padding: Theme.spacing.l
        background: Rectangle {
            radius: Theme.radii.large
            color: Theme.colours.surface
            border.color: Theme.colours.separator
        }

        ColumnLayout {
            anchors.fill: parent
            spacing: Theme.spacing.s

            RowLayout {
                spacing: Theme.spacing.m
                Rectangle {
                    implicitWidth: 34
                    implicitHeight: 34
                    radius: Theme.radii.medium
                    color: Theme.colours.accentSoft
                    Icon {
                        anchors.centerIn: parent
                        symbol: tile.symbol
                        size: 20
                        color: Theme.colours.accent
                    }
                }
                Text {
                    text: tile.label
                    font.pixelSize: Theme.type.body
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                ActionButton {
                    visible: tile.opens
                    kind: ActionButton.Plain
                    text: qsTr("Open")
                    Accessible.name: qsTr("Open %1").arg(tile.label)
                    leftPadding: Theme.spacing.s
                    rightPadding: Theme.spacing.s
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
                    hoverEnabled: true
                    Accessible.name: qsTr("Ask Pilo: %1").arg(modelData)
                    Layout.fillWidth: true
                    topPadding: Theme.spacing.s
                    bottomPadding: Theme.spacing.s
                    leftPadding: Theme.spacing.m
                    rightPadding: Theme.spacing.m
                    Keys.onReturnPressed: clicked()
                    Keys.onEnterPressed: clicked()
                    contentItem: Text {
                        text: prompt.text
                        wrapMode: Text.Wrap
                        font.pixelSize: Theme.type.callout
                        color: prompt.hovered ? Theme.colours.text : Theme.colours.secondaryText
                    }
                    background: Rectangle {
                        radius: Theme.radii.medium
                        color: prompt.down ? Theme.colours.pressed
                             : prompt.hovered ? Theme.colours.accentSoft : Theme.colours.hover
                        FocusRing { shown: prompt.visualFocus }
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
            placeholderTextColor: Theme.colours.tertiaryText
            color: Theme.colours.text
            font.pixelSize: Theme.type.body
            padding: Theme.spacing.m
            Accessible.name: qsTr("Ask Pilo")
            // Tab moves on, as in every other field, rather than typing a tab.
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            wrapMode: TextEdit.Wrap
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.minimumHeight: 64
            background: Rectangle {
                radius: Theme.radii.large
                color: Theme.colours.surface
                border.color: draft.activeFocus ? Theme.colours.accent : Theme.colours.border
                FocusRing { shown: draft.activeFocus }
            }
            onTextChanged: if (text !== board.navigation.pendingAgentDraft) board.navigation.pendingAgentDraft = text
        }

        // Sends the draft and opens the panel, where its progress shows.
        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24

            Text {
                text: board.pilo.loaded && !board.pilo.online
                      ? qsTr("Pilo isn't connected to Tarn yet. You can read past replies here; sending opens once it's connected.")
                      : ""
                wrapMode: Text.Wrap
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.fillWidth: true
            }
            ActionButton {
                objectName: "boardSend"
                kind: ActionButton.Primary
                symbol: "paperplane"
                text: qsTr("Ask Pilo")
                enabled: board.pilo.canSend && board.navigation.pendingAgentDraft.trim().length > 0
                onClicked: {
                    board.pilo.ask(board.navigation.pendingAgentDraft, board.navigation.piloPage, false)
                    board.navigation.piloPanelOpen = true
                }
            }
        }

        Connections {
            target: board.pilo
            function onSent() { board.navigation.pendingAgentDraft = "" }
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
