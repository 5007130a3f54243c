import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// The rooms beside the timeline: channels and direct messages in the
// service's order, each with its unread count and newest message.
Pane {
    id: list

    required property NativeChatView chat
    // The open room's name as the list shows it, for the screen's title.
    readonly property string selectedName: rooms.selectedName
    // Ids of the rooms with a live huddle.
    property var liveRooms: []

    padding: Theme.spacing.s
    background: Rectangle { color: Theme.colours.sidebar }

    signal newRoomRequested()

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.s

        RowLayout {
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            SearchField {
                objectName: "chatSearch"
                placeholderText: qsTr("Search messages")
                text: list.chat.searchText
                Layout.fillWidth: true
                onTextChanged: if (text !== list.chat.searchText) list.chat.searchText = text
            }
            IconButton {
                objectName: "newRoom"
                symbol: "square.and.pencil"
                text: qsTr("New room")
                onClicked: list.newRoomRequested()
            }
        }

        LoadingPlaceholder {
            visible: list.chat.loading && rooms.count === 0
            rows: 5
            Layout.fillWidth: true
        }

        ChatRoomView {
            id: rooms

            objectName: "chatRooms"
            visible: list.chat.searchText.length === 0
            chat: list.chat
            liveRooms: list.liveRooms
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        ChatSearchHits {
            objectName: "chatSearchHits"
            visible: list.chat.searchText.length > 0
            chat: list.chat
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
