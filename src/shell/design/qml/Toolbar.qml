import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// The bar at the top of a screen: the title (and a line under it) at the
// start, the screen's actions, given as children, at the end, and a hairline
// below.
Rectangle {
    id: bar

    property string title
    property string subtitle
    default property alias actions: trailing.data

    implicitHeight: Math.max(56, column.implicitHeight + 2 * Theme.spacing.m)
    color: "transparent"

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.spacing.xl
        anchors.rightMargin: Theme.spacing.l
        spacing: Theme.spacing.m

        ColumnLayout {
            id: column

            spacing: 2
            Layout.fillWidth: true
            Text {
                text: bar.title
                elide: Text.ElideRight
                font.pixelSize: Theme.type.title3
                font.weight: Font.DemiBold
                color: Theme.colours.text
                Accessible.role: Accessible.Heading
                Accessible.name: text
                Layout.fillWidth: true
            }
            Text {
                visible: bar.subtitle.length > 0
                text: bar.subtitle
                elide: Text.ElideRight
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.fillWidth: true
            }
        }
        RowLayout {
            id: trailing

            spacing: Theme.spacing.xs
        }
    }

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 1
        color: Theme.colours.separator
    }
}
