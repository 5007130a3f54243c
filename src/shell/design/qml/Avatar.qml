import QtQuick
import PiloTarn.Design

// A person: their photo when `photo` is given and loads, otherwise their
// initials on the gradient of `key` (their id; their name when it is left
// empty), the same colours on every machine.
Item {
    id: avatar

    property string name
    property string key
    // The photo's address; empty for none.
    property string photo
    property real size: 32

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Graphic
    Accessible.name: name

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        visible: !picture.ready
        gradient: Gradient {
            GradientStop { position: 0; color: Theme.avatarTop(avatar.key.length > 0 ? avatar.key : avatar.name) }
            GradientStop { position: 1; color: Theme.avatarBottom(avatar.key.length > 0 ? avatar.key : avatar.name) }
        }

        Text {
            anchors.centerIn: parent
            text: Theme.initials(avatar.name)
            color: "#ffffff"
            font.pixelSize: Math.round(avatar.size * 0.4)
            font.weight: Font.DemiBold
        }
    }

    // A canvas clips the photo to a circle without a graphics-effects module.
    Canvas {
        id: picture

        property bool ready: false

        anchors.fill: parent
        visible: ready
        onImageLoaded: {
            ready = isImageLoaded(avatar.photo)
            requestPaint()
        }
        onPaint: {
            const context = getContext("2d")
            context.reset()
            if (!ready)
                return
            context.beginPath()
            context.arc(width / 2, height / 2, width / 2, 0, 2 * Math.PI)
            context.clip()
            context.drawImage(avatar.photo, 0, 0, width, height)
        }
        Component.onCompleted: if (avatar.photo.length > 0) loadImage(avatar.photo)
    }
}
