import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// A paragraph, heading or preformatted text, with its list marker and the
// bar of the quotes it sits in. Hovering a link shows where it goes.
RowLayout {
    id: row

    required property NativeMailView mailView
    required property string text
    required property int depth
    required property bool quote
    required property bool signature
    required property string marker
    required property int level
    property bool monospace: false

    spacing: Theme.spacing.xs
    Layout.fillWidth: true
    Layout.leftMargin: row.depth * Theme.spacing.l

    Rectangle {
        visible: row.quote
        implicitWidth: 2
        color: Theme.colours.separator
        Layout.fillHeight: true
    }
    Label {
        visible: row.marker.length > 0
        text: row.marker
        color: Theme.colours.secondaryText
        Layout.alignment: Qt.AlignTop
    }
    Label {
        objectName: "mailBlockText"
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
        Layout.fillWidth: true

        HoverHandler {
            cursorShape: parent.hoveredLink.length > 0 ? Qt.PointingHandCursor : Qt.IBeamCursor
        }
    }
}
