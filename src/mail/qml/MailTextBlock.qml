import QtQuick
import QtQuick.Controls
import PiloTarn.Mail
import PiloTarn.Design

// A paragraph, heading or preformatted text, with its list marker and the
// bar of the quotes it sits in. Hovering a link shows where it goes.
// Placed by hand rather than by a layout: a newsletter has thousands.
Item {
    id: row

    required property NativeMailView mailView
    required property string text
    required property int depth
    required property bool quote
    required property bool signature
    required property string marker
    required property int level
    property bool monospace: false

    readonly property real barEnd: quote ? bar.width + Theme.spacing.xs : 0

    x: depth * Theme.spacing.l
    width: parent ? parent.width - x : 0
    implicitHeight: body.implicitHeight

    Rectangle {
        id: bar
        visible: row.quote
        width: 2
        height: row.height
        color: Theme.colours.separator
    }
    Label {
        id: markerLabel
        visible: row.marker.length > 0
        x: row.barEnd
        text: row.marker
        color: Theme.colours.secondaryText
    }
    Label {
        id: body
        objectName: "mailBlockText"
        x: row.barEnd + (markerLabel.visible ? markerLabel.implicitWidth + Theme.spacing.xs : 0)
        width: row.width - x
        text: row.text
        textFormat: Text.StyledText
        wrapMode: Text.Wrap
        color: row.signature || row.quote ? Theme.colours.secondaryText : Theme.colours.text
        font.family: row.monospace ? "monospace" : Theme.textFamily
        font.pixelSize: row.level > 0 ? Theme.type.title3 : Theme.type.body
        font.weight: row.level > 0 ? Font.DemiBold : Font.Normal
        linkColor: Theme.colours.accent
        onLinkActivated: link => row.mailView.openLink(link)
        ToolTip.visible: hoveredLink.length > 0
        ToolTip.text: hoveredLink

        HoverHandler {
            cursorShape: parent.hoveredLink.length > 0 ? Qt.PointingHandCursor : Qt.IBeamCursor
        }
    }
}
