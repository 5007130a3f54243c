import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// The heading of a group of rows or of a part of a page, with an optional
// action at its end (a "See all", a "+" button) placed as its child.
RowLayout {
    id: header

    property string text
    default property alias actions: trailing.data

    spacing: Theme.spacing.s
    Accessible.role: Accessible.Heading
    Accessible.name: text

    Text {
        text: header.text
        elide: Text.ElideRight
        font.pixelSize: Theme.type.footnote
        font.weight: Font.DemiBold
        font.letterSpacing: 0.2
        color: Theme.colours.secondaryText
        Layout.fillWidth: true
    }
    RowLayout {
        id: trailing

        spacing: Theme.spacing.xs
    }
}
