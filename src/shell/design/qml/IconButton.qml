import QtQuick
import QtQuick.Controls
import PiloTarn.Design

// A button that is only an icon, for toolbars and rows. `text` is not drawn:
// it is the button's accessible name and its tooltip, so it is required.
ToolButton {
    id: button

    required property string symbol
    property real iconSize: 20
    property bool lit: false
    property color iconColour: lit ? Theme.colours.accent : Theme.colours.secondaryText

    implicitWidth: iconSize + 2 * Theme.spacing.s
    implicitHeight: iconSize + 2 * Theme.spacing.s
    padding: Theme.spacing.s
    Accessible.name: text
    ToolTip.visible: hovered && text.length > 0
    ToolTip.text: text
    ToolTip.delay: 500
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Icon {
        symbol: button.symbol
        size: button.iconSize
        color: button.iconColour
    }

    background: Rectangle {
        radius: Theme.radii.medium
        color: button.down ? Theme.colours.pressed : button.hovered || button.lit ? Theme.colours.hover : "transparent"
        FocusRing { shown: button.visualFocus }
    }
}
