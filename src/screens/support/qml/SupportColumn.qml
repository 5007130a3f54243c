import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// One column of the board: its status and count over its cards, lit while
// a card is dragged over it; a card dropped on it moves to its status.
Rectangle {
    id: column

    required property NativeSupportView support
    required property Item dragLayer
    required property string status
    required property string title
    required property NativeSupportCardModel cards

    radius: Theme.radii.large
    color: drop.containsDrag ? Theme.colours.accentSoft : Theme.colours.hover
    Accessible.role: Accessible.List
    Accessible.name: title

    DropArea {
        id: drop
        anchors.fill: parent
        keys: ["support-card"]
        onDropped: event => {
            column.support.moveCard(event.source.objectName, column.status)
            event.accept()
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.spacing.s
        spacing: Theme.spacing.s

        RowLayout {
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            Label {
                text: column.title
                color: Theme.colours.text
                font.pixelSize: Theme.type.callout
                font.weight: Font.DemiBold
            }
            Label {
                text: column.cards.count
                color: Theme.colours.tertiaryText
                font.pixelSize: Theme.type.footnote
                Layout.fillWidth: true
            }
        }
        SupportColumnCards {
            objectName: "supportColumn-" + column.status
            support: column.support
            dragLayer: column.dragLayer
            model: column.cards
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
