import QtQuick
import QtQuick.Controls
import PiloTarn.Chat
import PiloTarn.Design

// The hits of a search across rooms, newest first; choosing one opens its
// room (and its thread, for a reply).
ListView {
    required property NativeChatView chat

    model: chat.searchHits
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        required property int index
        required property string body
        required property string author
        required property string roomName

        width: ListView.view.width
        text: body
        subtitle: author + " · # " + roomName
        avatarName: author
        onClicked: (ListView.view as ChatSearchHits).chat.openSearchHit(index)
    }
}
