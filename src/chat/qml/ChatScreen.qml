import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// The chat screen: the rooms at the side, the open room's timeline over
// its composer, and a message's thread beside them when one is open. It
// loads when it is made and stops refreshing when it goes away.
Pane {
    id: screen

    required property NativeChatView chat
    // The window's huddle; without it the room header offers none.
    property NativeHuddleView huddle: null

    padding: 0
    background: null

    Component.onCompleted: {
        chat.appear()
        if (huddle)
            huddle.refreshVisible()
        openAskedSheet()
    }

    // Another part of the window asked for a new room of a kind.
    function openAskedSheet() {
        if (chat.createMode.length === 0)
            return
        newRoom.channel = chat.createMode !== "dm"
        newRoom.open()
    }

    Connections {
        target: screen.chat
        function onCreateModeChanged() {
            screen.openAskedSheet()
        }
        // A downloaded attachment opens in the desktop's app for its kind.
        function onAttachmentReady(file) {
            Qt.openUrlExternally(file)
        }
    }

    ChatNewRoomSheet {
        id: newRoom
        chat: screen.chat
    }

    ChatGifPicker {
        chat: screen.chat
    }

    ChatRoomSettingsSheet {
        id: roomSettings
        chat: screen.chat
    }
    Component.onDestruction: chat.disappear()

    // Nothing is marked read while the window is in the background.
    Binding {
        target: screen.chat
        property: "canMarkRead"
        value: screen.Window.active
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        ChatRoomList {
            id: roomList
            chat: screen.chat
            liveRooms: screen.huddle !== null ? screen.huddle.liveRooms : []
            Layout.preferredWidth: 280
            onNewRoomRequested: newRoom.open()
            Layout.fillHeight: true
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
            Layout.margins: Theme.spacing.m

            RowLayout {
                visible: screen.chat.selectedRoom.length > 0
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Text {
                    objectName: "chatRoomTitle"
                    text: roomList.selectedName
                    font.pixelSize: Theme.type.title3
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                ActionButton {
                    objectName: "chatHuddle"
                    // Read through liveRooms, so it is asked again when they change.
                    readonly property bool live: screen.huddle !== null && screen.huddle.liveRooms.length > 0
                        && screen.huddle.isLive(screen.chat.selectedRoom)
                    visible: screen.huddle !== null
                        && !(screen.huddle.running && screen.huddle.roomID === screen.chat.selectedRoom)
                    symbol: "phone"
                    text: live ? qsTr("Join huddle") : qsTr("Start huddle")
                    onClicked: screen.huddle.join(screen.chat.selectedRoom)
                }
                IconButton {
                    objectName: "chatRoomSettings"
                    visible: screen.chat.selectedKind === "channel"
                    symbol: "gearshape"
                    text: qsTr("Channel settings")
                    onClicked: roomSettings.open()
                }
            }

            ErrorBanner {
                objectName: "chatError"
                visible: text.length > 0
                text: screen.chat.errorText
                Layout.fillWidth: true
            }

            LoadingPlaceholder {
                visible: screen.chat.loading && timeline.count === 0 && screen.chat.selectedRoom.length > 0
                rows: 4
                Layout.fillWidth: true
            }

            EmptyState {
                visible: !screen.chat.loading && screen.chat.selectedRoom.length === 0
                symbol: "message"
                title: qsTr("No rooms yet")
                text: qsTr("Channels and direct messages you are in show here.")
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            ChatTimeline {
                id: timeline
                visible: screen.chat.selectedRoom.length > 0
                chat: screen.chat
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            ChatComposer {
                visible: screen.chat.selectedRoom.length > 0
                chat: screen.chat
                placeholder: roomList.selectedName.length > 0 ? qsTr("Message %1").arg(roomList.selectedName)
                                                              : qsTr("Message")
                Layout.fillWidth: true
            }
        }

        Rectangle {
            visible: thread.visible
            implicitWidth: 1
            color: Theme.colours.separator
            Layout.fillHeight: true
        }

        ColumnLayout {
            id: thread

            objectName: "chatThread"
            visible: screen.chat.threadParent.length > 0
            spacing: Theme.spacing.s
            Layout.preferredWidth: 340
            Layout.fillHeight: true
            Layout.margins: Theme.spacing.m

            RowLayout {
                Layout.fillWidth: true
                Text {
                    text: qsTr("Thread")
                    font.pixelSize: Theme.type.title3
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    Layout.fillWidth: true
                }
                IconButton {
                    symbol: "xmark"
                    text: qsTr("Close the thread")
                    onClicked: screen.chat.closeThread()
                }
            }

            ChatTimeline {
                id: threadReplies
                chat: screen.chat
                inThread: true
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            ChatComposer {
                chat: screen.chat
                inThread: true
                replies: threadReplies.count
                placeholder: qsTr("Reply…")
                Layout.fillWidth: true
            }
        }
    }

    // Whether the open room's huddle is live is asked again as rooms change.
    Connections {
        target: screen.chat
        function onSelectedRoomChanged() {
            if (screen.huddle)
                screen.huddle.refreshVisible()
        }
        function onRefreshed() {
            if (screen.huddle)
                screen.huddle.refreshVisible()
        }
    }
}
