import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// What a place shows when it has nothing to show: an icon, one title and
// one line that says why or what comes, and an optional action placed as
// its child. Says it once: never the screen's title again.
ColumnLayout {
    id: empty

    property string symbol
    property string title
    property string text
    default property alias actions: trailing.data

    spacing: Theme.spacing.s

    Rectangle {
        visible: empty.symbol.length > 0
        implicitWidth: 64
        implicitHeight: 64
        radius: 32
        color: Theme.colours.accentSoft
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: Theme.spacing.s
        Icon {
            anchors.centerIn: parent
            symbol: empty.symbol
            size: 30
            color: Theme.colours.accent
        }
    }
    Text {
        text: empty.title
        visible: text.length > 0
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: Theme.type.title3
        font.weight: Font.DemiBold
        color: Theme.colours.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
        Layout.fillWidth: true
    }
    Text {
        text: empty.text
        visible: text.length > 0
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: Theme.type.callout
        color: Theme.colours.secondaryText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Layout.fillWidth: true
    }
    RowLayout {
        id: trailing

        spacing: Theme.spacing.s
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: children.length > 0 ? Theme.spacing.s : 0
    }
}
