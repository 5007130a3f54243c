import QtQuick
import PiloTarn.Design

// The ring every control draws around itself while it has keyboard focus,
// so a person moving with Tab always sees where they are. Put it in the
// control's background and bind `shown` to the control's `visualFocus`.
Rectangle {
    property bool shown: false

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.radii.medium + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.colours.focusRing
    visible: shown
}
