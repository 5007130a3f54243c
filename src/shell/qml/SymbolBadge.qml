import QtQuick
import QtQuick.Controls

// A place's mark: its initial on a tint of the accent. The symbol names come
// from the navigation tables; the platform has no shared set of such icons,
// so the initial stands in and the name is kept for accessibility.
Rectangle {
    id: badge

    required property string label
    property string symbol
    property bool lit: false

    implicitWidth: 22
    implicitHeight: 22
    radius: 6
    color: lit ? palette.highlight : Qt.rgba(palette.highlight.r, palette.highlight.g, palette.highlight.b, 0.14)
    Accessible.ignored: true

    Label {
        anchors.centerIn: parent
        text: badge.label.length > 0 ? badge.label.charAt(0).toUpperCase() : ""
        font.weight: Font.DemiBold
        font.pixelSize: 11
        color: badge.lit ? palette.highlightedText : palette.highlight
    }
}
