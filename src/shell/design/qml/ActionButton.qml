import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// A button by what it does: `ActionButton.Primary` (the one main action of
// a page, on the accent), `Secondary` (outlined), `Destructive` (removes or
// ends something, in the danger colour) or `Plain` (text only). An optional
// `symbol` leads the text.
Button {
    id: button

    enum Kind { Primary, Secondary, Destructive, Plain }

    property int kind: ActionButton.Secondary
    property string symbol

    // The text's and icon's colour, set by the kind.
    property color ink: kind === ActionButton.Primary ? Theme.colours.accentText
                               : kind === ActionButton.Destructive ? Theme.colours.danger
                               : kind === ActionButton.Plain ? Theme.colours.accent : Theme.colours.text

    leftPadding: Theme.spacing.l
    rightPadding: Theme.spacing.l
    topPadding: Theme.spacing.s
    bottomPadding: Theme.spacing.s
    font.pixelSize: Theme.type.callout
    font.weight: Font.Medium
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: RowLayout {
        spacing: Theme.spacing.s
        Item { Layout.fillWidth: true }
        Icon {
            visible: button.symbol.length > 0
            symbol: button.symbol
            size: 18
            color: button.ink
        }
        Text {
            text: button.text
            font: button.font
            color: button.ink
            elide: Text.ElideRight
        }
        Item { Layout.fillWidth: true }
    }

    background: Rectangle {
        implicitWidth: 96
        implicitHeight: 36
        radius: Theme.radii.medium
        color: button.kind === ActionButton.Primary
               ? (button.down ? Qt.darker(Theme.colours.accent, 1.15)
                  : button.hovered ? Qt.darker(Theme.colours.accent, 1.07) : Theme.colours.accent)
               : button.down ? Theme.colours.pressed
               : button.hovered ? Theme.colours.hover
               : button.kind === ActionButton.Destructive ? Theme.colours.dangerSoft : "transparent"
        border.width: button.kind === ActionButton.Secondary ? 1 : 0
        border.color: Theme.colours.border
        FocusRing { shown: button.visualFocus }
    }
}
