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

    // At most 320 wide and 240 high, in proportion.
    readonly property real shrink: Math.min(1, 240 / Math.max(1, picture.implicitHeight))
    implicitWidth: picture.visible ? picture.implicitWidth * shrink : button.implicitWidth
    implicitHeight: picture.visible ? picture.implicitHeight * shrink : button.implicitHeight

    Image {
        id: picture
        objectName: "chatImage"
        visible: attachment.image.length > 0 && status === Image.Ready
        source: attachment.image
        asynchronous: true
        anchors.fill: parent
        fillMode: Image.PreserveAspectFit
        sourceSize.width: 320
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
