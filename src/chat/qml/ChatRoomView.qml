import QtQuick
import QtQuick.Controls
import PiloTarn.Chat
import PiloTarn.Design

// The room list itself: channels, then direct messages, under their
// headings, the open room lit.
ListView {
    required property NativeChatView chat
    // The open room's name as the list shows it, for the screen's title.
    property string selectedName
    // Ids of the rooms with a live huddle, marked in the list.
    property var liveRooms: []

    model: chat.rooms
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    section.property: "kind"
    section.delegate: SectionHeader {
        required property string section
        width: ListView.view.width
        text: section === "dm" ? qsTr("Direct messages") : qsTr("Channels")
    }

    delegate: ListRow {
        objectName: "chatRoom"

        required property string roomId
        required property string name
        required property string kind
        required property int unread
        required property string preview
        required property string previewAuthor
        readonly property ChatRoomView view: ListView.view as ChatRoomView
        readonly property bool direct: kind === "dm"
        readonly property bool live: view !== null && view.liveRooms.indexOf(roomId) >= 0

        width: ListView.view.width
        text: direct ? name : "# " + name
        symbol: live ? "waveform" : direct ? "" : "message"
        avatarName: direct ? name : ""
        subtitle: previewAuthor.length > 0 ? previewAuthor + ": " + preview : preview
        count: unread
        detail: live ? qsTr("Huddle") : ""
        lit: view !== null && roomId === view.chat.selectedRoom
        onLitChanged: if (lit) view.selectedName = text
        Component.onCompleted: if (lit) view.selectedName = text
        onClicked: view.chat.selectRoom(roomId)
    }
}
