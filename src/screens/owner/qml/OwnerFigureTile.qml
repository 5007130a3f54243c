import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// One figure of the dashboard; clicking it, or Enter while it has focus,
// opens the screen behind it. A figure that asks for action is marked.
AbstractButton {
    id: tile

    required property string figureKey
    required property string label
    required property string value
    required property string detail
    required property bool attention
    required property string screen
    required property string section

    objectName: "figure-" + figureKey
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    padding: Theme.spacing.m
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.role: Accessible.Button
    Accessible.name: label + ": " + value + ", " + detail
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: Theme.radii.medium
        color: tile.down ? Theme.colours.pressed : tile.hovered ? Theme.colours.hover : Theme.colours.surface
        border.width: 1
        border.color: tile.attention ? Theme.colours.warning : Theme.colours.separator

        FocusRing {
            shown: tile.visualFocus
        }
    }

    contentItem: ColumnLayout {
        spacing: Theme.spacing.xxs

        Text {
            text: tile.label
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }
        Text {
            text: tile.value
            font.pixelSize: Theme.type.title2
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Layout.fillWidth: true
        }
        Text {
            text: tile.detail
            elide: Text.ElideRight
            font.pixelSize: Theme.type.caption
            color: tile.attention ? Theme.colours.warning : Theme.colours.tertiaryText
            Layout.fillWidth: true
        }
    }
}
