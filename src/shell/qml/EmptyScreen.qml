import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// What a screen shows until this app has it: its title and a plain word
// that nothing is shown here yet, never made-up content.
Item {
    id: empty

    required property string title
    // The whole trail, so "Dashboard" under Books is not taken for the owner's.
    required property string place

    ColumnLayout {
        objectName: "emptyScreen"
        anchors.centerIn: parent
        width: Math.min(parent.width - 48, 420)
        spacing: 8

        Label {
            text: empty.title
            font.pixelSize: 18
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
        }
        Label {
            text: qsTr("%1 is not available in this version of Pilo Tarn yet.").arg(empty.place)
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            opacity: 0.7
            Layout.fillWidth: true
        }
    }
}
