import QtQuick
import PiloTarn.Design

// One bar of the month chart, its height a share of `largest`; a month's
// money-in bar carries the month's label under the pair.
Item {
    id: bar

    required property string label
    required property string kind
    required property string amount
    required property real cents
    property real largest: 0
    property real labelHeight: 0
    property color colour
    readonly property bool incoming: kind === "Money in"

    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("%1 %2: %3").arg(label).arg(kind).arg(amount)

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: bar.labelHeight
        x: bar.incoming ? parent.width * 0.3 : parent.width * 0.05
        width: parent.width * 0.65
        height: bar.largest > 0 ? (parent.height - bar.labelHeight) * bar.cents / bar.largest : 0
        radius: Theme.radii.small
        color: bar.colour
    }
    Text {
        visible: bar.incoming
        anchors.bottom: parent.bottom
        x: parent.width * 0.3
        width: parent.width * 1.4
        horizontalAlignment: Text.AlignHCenter
        text: bar.label
        font.pixelSize: Theme.type.caption
        color: Theme.colours.secondaryText
    }
}
