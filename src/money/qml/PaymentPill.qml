import QtQuick
import PiloTarn.Design

// A payment's state beside it: the text on a faint wash of its tone's colour,
// the text itself in that colour, so it reads on light and dark alike. Tones:
// 0 settled, 1 waiting on the processor, 2 waiting on a decision, 3 closed.
Item {
    id: pill

    property int tone: 0
    property string text
    readonly property color ink: tone === 0 ? Theme.colours.success
                                 : tone === 1 ? Theme.colours.warning
                                 : tone === 2 ? Theme.colours.accent : Theme.colours.secondaryText

    implicitWidth: label.implicitWidth + 2 * Theme.spacing.s
    implicitHeight: label.implicitHeight + Theme.spacing.xs
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Rectangle {
        anchors.fill: parent
        radius: Theme.radii.pill
        color: pill.ink
        opacity: Theme.dark ? 0.22 : 0.14
    }
    Text {
        id: label

        anchors.centerIn: parent
        text: pill.text
        font.pixelSize: Theme.type.footnote
        font.weight: Font.Medium
        color: pill.ink
    }
}
