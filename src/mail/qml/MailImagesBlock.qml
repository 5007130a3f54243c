import QtQuick
import PiloTarn.Design

// Images side by side, each through the mail image provider: never from
// its host.
Flow {
    id: flow

    required property var images
    required property int depth

    spacing: Theme.spacing.s
    x: depth * Theme.spacing.l
    width: parent ? parent.width - x : 0

    Repeater {
        model: flow.images
        delegate: Image {
            required property var modelData
            objectName: "mailImage"
            readonly property real wanted: modelData.width > 0 ? modelData.width : 320
            source: modelData.url
            asynchronous: true
            fillMode: Image.PreserveAspectFit
            width: Math.min(wanted, parent ? parent.width : wanted)
            height: modelData.height > 0 ? modelData.height * width / wanted : 200
        }
    }
}
