import QtQuick
import PiloTarn.Design

// A symbol by the navigation tables' names ("envelope", "gearshape",
// "square.and.pencil"...), drawn from the icon font the app carries.
// Decoration only: the control holding it carries the accessible name.
Text {
    property string symbol
    property real size: 20

    text: Theme.glyph(symbol)
    font.family: Theme.iconFamily
    font.pixelSize: size
    color: Theme.colours.secondaryText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    width: size
    height: size
    Accessible.ignored: true
}
