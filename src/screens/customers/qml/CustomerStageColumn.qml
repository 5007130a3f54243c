import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Customers
import PiloTarn.Design

// One stage of the pipeline: its customers as cards. A card opens on a
// click; its menu (right click, or the menu key) moves it to another stage.
ColumnLayout {
    id: column

    property NativeCustomersView view
    property string stage
    property string label

    spacing: Theme.spacing.xs

    // The card menu's customer, moved to a stage from the menu.
    function openMenu(clientId: string, card: Item) {
        moveMenu.client = clientId
        moveMenu.popup(card, 0, card.height)
    }

    Menu {
        id: moveMenu

        property string client

        Repeater {
            model: column.view ? column.view.stages : []
            delegate: MenuItem {
                required property var modelData
                text: qsTr("Move to %1").arg(modelData.label)
            }
            onItemAdded: (index, item) => {
                const stage = column.view.stages[index].id
                item.enabled = stage !== column.stage
                (item as MenuItem).triggered.connect(() => column.view.changeStage(moveMenu.client, stage))
            }
        }
    }

    SectionHeader {
        text: cards.count > 0 ? qsTr("%1 · %2").arg(column.label).arg(cards.count) : column.label
        Layout.fillWidth: true
    }

    ListView {
        id: cards

        model: column.view ? column.view.stageModel(column.stage) : null
        clip: true
        spacing: Theme.spacing.xs
        boundsBehavior: Flickable.StopAtBounds
        Layout.fillWidth: true
        Layout.fillHeight: true

        delegate: ItemDelegate {
            id: card
            objectName: "pipelineCard"

            required property string clientId
            required property string name
            required property string company
            required property string followUp
            readonly property CustomerStageColumn owner: ListView.view.parent as CustomerStageColumn

            width: ListView.view.width
            padding: Theme.spacing.s
            Accessible.name: name
            onClicked: if (owner && owner.view) owner.view.open(clientId)
            Keys.onMenuPressed: if (owner) owner.openMenu(clientId, card)

            background: Rectangle {
                radius: Theme.radii.medium
                color: card.hovered ? Theme.colours.hover : Theme.colours.raised
                border.width: 1
                border.color: Theme.colours.separator
                FocusRing { shown: card.visualFocus }
            }

            contentItem: ColumnLayout {
                spacing: 2
                Text {
                    text: card.name
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.callout
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    Layout.fillWidth: true
                }
                Text {
                    visible: text.length > 0
                    text: card.followUp.length > 0 ? qsTr("Follow up %1").arg(card.followUp) : card.company
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.secondaryText
                    Layout.fillWidth: true
                }
            }

            TapHandler {
                acceptedButtons: Qt.RightButton
                onTapped: if (card.owner) card.owner.openMenu(card.clientId, card)
            }
        }
    }
}
