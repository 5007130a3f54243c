import QtQuick
import PiloTarn.Design

// What a screen shows until this app has it: once, in plain words, that it
// comes in a later version, never made-up content. Its title is the trail's.
Item {
    id: empty

    // The whole trail, so "Dashboard" under Books is not taken for the owner's.
    required property string place

    EmptyState {
        objectName: "emptyScreen"
        anchors.centerIn: parent
        anchors.verticalCenterOffset: -40
        width: Math.min(parent.width - 2 * Theme.spacing.xxl, 420)
        symbol: "sparkles"
        title: qsTr("Coming in a later version")
        text: qsTr("%1 is not part of this version of Pilo Tarn yet.").arg(empty.place)
    }
}
