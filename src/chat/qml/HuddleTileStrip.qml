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

    // One person's camera, or their screen half as large again.
    component VideoTile: Rectangle {
        id: frame

        property NativeHuddleView huddle
        property string conn
        property string name
        property bool screen: false

        width: screen ? 240 : 160
        height: width * 9 / 16
        radius: Theme.radii.medium
        color: Theme.colours.sidebar
        border.width: 1
        border.color: Theme.colours.separator
        clip: true

        NativeHuddleVideo {
            id: picture
            objectName: "huddleVideo"
            anchors.fill: parent
            anchors.margins: 1
            // Asked again when the tile is shown, once the connection carries the track.
            track: frame.visible && frame.huddle !== null ? frame.huddle.videoTrack(frame.conn, frame.screen) : null
        }
        Avatar {
            visible: !picture.showing
            anchors.centerIn: parent
            name: frame.name
            size: 32
        }
        Text {
            anchors.left: parent.left
            anchors.bottom: parent.bottom
            anchors.margins: Theme.spacing.xs
            text: frame.screen ? qsTr("%1's screen").arg(frame.name) : frame.name
            font.pixelSize: Theme.type.footnote
            color: "white"
            style: Text.Outline
            styleColor: "#80000000"
        }
    }


    orientation: ListView.Horizontal
    interactive: contentWidth > width
    clip: true
    implicitHeight: 135
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

        VideoTile {
            visible: tile.other && tile.video
            huddle: tile.strip !== null ? tile.strip.huddle : null
            conn: tile.conn
            name: tile.name
        }
        VideoTile {
            visible: tile.other && tile.screen
            huddle: tile.strip !== null ? tile.strip.huddle : null
            conn: tile.conn
            name: tile.name
            screen: true
        }
    }
}
