import QtQuick
import PiloTarn.Chat
import PiloTarn.Design

// The others' cameras and screens in a row above the huddle bar: a tile per
// camera and a larger one per screen, each drawn from its track as frames
// arrive, with the person's initials until the first one. Empty (and no
// wider than nothing) while nobody else sends video.
ListView {
    id: strip

    property NativeHuddleView huddle

    orientation: ListView.Horizontal
    interactive: contentWidth > width
    clip: true
    // As tall as its tallest tile: a screen's, a camera's, or nothing.
    implicitHeight: contentItem.childrenRect.height
    model: huddle !== null ? huddle.participants : null
    delegate: Row {
        id: tile

        required property string name
        required property string userID
        required property string conn
        required property bool video
        required property bool screen
        readonly property HuddleTileStrip strip: ListView.view as HuddleTileStrip
        readonly property bool other: strip !== null && strip.huddle !== null && userID !== strip.huddle.selfID

        spacing: Theme.spacing.s
        rightPadding: visibleChildren.length > 0 ? Theme.spacing.s : 0
        anchors.verticalCenter: parent ? parent.verticalCenter : undefined

        HuddleVideoTile {
            visible: tile.other && tile.video
            // Asked again when the tile is shown, once the connection carries the track.
            track: visible ? tile.strip.huddle.videoTrack(tile.conn, false) : null
            name: tile.name
        }
        HuddleVideoTile {
            visible: tile.other && tile.screen
            track: visible ? tile.strip.huddle.videoTrack(tile.conn, true) : null
            name: tile.name
            screen: true
        }
    }
}
