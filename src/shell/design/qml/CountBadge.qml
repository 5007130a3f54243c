import QtQuick
import PiloTarn.Design

// An unread count on a pill ("99+" above 99), or with `count` 0 and `dot`
// set, a plain dot. Hidden when there is nothing to show.
Rectangle {
    id: badge

    property int count: 0
    property bool dot: false
    // Counts of muted places are shown without the accent.
    property bool muted: false

    visible: count > 0 || dot
    implicitHeight: dot && count === 0 ? 8 : Math.round(Theme.type.caption + 6)
    implicitWidth: dot && count === 0 ? 8 : Math.max(implicitHeight, label.implicitWidth + 10)
    radius: height / 2
    color: muted ? Theme.colours.tertiaryText : Theme.colours.accent
    Accessible.role: Accessible.StaticText
    Accessible.name: count > 0 ? qsTr("%n unread", "", count) : qsTr("Unread")

    Text {
        id: label

        anchors.centerIn: parent
        visible: badge.count > 0
        text: badge.count > 99 ? "99+" : badge.count
        color: badge.muted ? Theme.colours.window : Theme.colours.accentText
        font.pixelSize: Theme.type.caption
        font.weight: Font.DemiBold
    }
}
