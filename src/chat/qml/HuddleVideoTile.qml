import QtQuick
import PiloTarn.Chat
import PiloTarn.Design

// One person's camera, or their screen half as large again, drawn from its
// track, with the person's initials until the first frame.
Rectangle {
    id: frame

    property NativeHuddleTrack track: null
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
        track: frame.track
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
