import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// One figure of a page's head: what it is, the amount, and a note under it.
Rectangle {
    id: card

    property string title
    property string value
    property string note

    radius: Theme.radii.medium
    color: Theme.colours.surface
    border.width: 1
    border.color: Theme.colours.separator
    implicitHeight: figure.implicitHeight + 2 * Theme.spacing.m
    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + value

    ColumnLayout {
        id: figure

        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.xxs
        Text {
            text: card.title
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
        }
        Text {
            text: card.value
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Layout.fillWidth: true
        }
        Text {
            visible: text.length > 0
            text: card.note
            font.pixelSize: Theme.type.caption
            color: Theme.colours.tertiaryText
        }
    }
}
