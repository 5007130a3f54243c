import QtQuick
import QtQuick.Controls
import PiloTarn.Chat
import PiloTarn.Design

// The found GIFs, three to a row, each its preview once it has come.
GridView {
    required property NativeChatView chat

    model: chat.gifPicker.results
    clip: true
    cellWidth: width / 3
    cellHeight: cellWidth * 0.75
    ScrollBar.vertical: ScrollBar {}

    delegate: ItemDelegate {
        id: cell

        required property string gifId
        required property string title
        required property string preview

        width: (GridView.view as ChatGifGrid).cellWidth
        height: (GridView.view as ChatGifGrid).cellHeight
        padding: Theme.spacing.xxs
        Accessible.name: title
        onClicked: (GridView.view as ChatGifGrid).chat.gifPicker.pick(gifId)
        contentItem: Image {
            source: cell.preview
            fillMode: Image.PreserveAspectCrop
            asynchronous: true
        }
        background: Rectangle {
            radius: Theme.radii.small
            color: cell.hovered ? Theme.colours.hover : Theme.colours.surface
        }
    }
}
