import QtQuick
import PiloTarn.Design

// One attachment: an image drawn inline once it is downloaded, anything
// else (or an image not there yet) a button with its name and size.
// Choosing either downloads the file and opens it in the desktop's app.
Item {
    id: attachment

    required property var modelData
    // The image's local file, once fetched.
    property string image

    signal clicked()

    implicitWidth: picture.visible ? picture.paintedWidth : button.implicitWidth
    implicitHeight: picture.visible ? picture.paintedHeight : button.implicitHeight

    Image {
        id: picture
        objectName: "chatImage"
        visible: attachment.image.length > 0 && status === Image.Ready
        source: attachment.image
        asynchronous: true
        fillMode: Image.PreserveAspectFit
        horizontalAlignment: Image.AlignLeft
        sourceSize.width: 320
        sourceSize.height: 240
        width: 320
        height: 240
        Accessible.role: Accessible.Graphic
        Accessible.name: attachment.modelData.name
        TapHandler { onTapped: attachment.clicked() }
        HoverHandler { cursorShape: Qt.PointingHandCursor }
    }

    ActionButton {
        id: button
        visible: !picture.visible
        kind: ActionButton.Secondary
        symbol: attachment.modelData.isImage ? "photo.on.rectangle.angled" : "doc.text"
        text: attachment.modelData.name + " · " + Math.max(1, Math.round(attachment.modelData.size / 1024)) + " KB"
        onClicked: attachment.clicked()
    }
}
