import QtQuick
import PiloTarn.Design
import PiloTarn.Overview

// One stage of a product board: its name and count over its work, each card
// moved back or on a stage by its buttons.
Rectangle {
    id: column

    property NativeOverviewView view
    property string stage
    property string previousStage
    property string nextStage

    radius: Theme.radii.medium
    color: Theme.colours.sidebar

    Text {
        id: heading
        x: Theme.spacing.m
        y: Theme.spacing.s
        text: qsTr("%1 · %2").arg(column.stage).arg(cards.count)
        font.pixelSize: Theme.type.callout
        font.weight: Font.DemiBold
        color: Theme.colours.text
    }

    ListView {
        id: cards
        anchors.top: heading.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Theme.spacing.s
        model: column.view ? column.view.stageModel(column.stage) : null
        clip: true
        spacing: Theme.spacing.xs
        boundsBehavior: Flickable.StopAtBounds

        delegate: Rectangle {
            id: card

            required property string itemId
            required property string title
            required property string line
            readonly property BoardStageColumn stageColumn: ListView.view ? ListView.view.parent as BoardStageColumn
                                                                          : null

            objectName: "boardCard"
            width: ListView.view.width
            height: details.implicitHeight + 2 * Theme.spacing.s
            radius: Theme.radii.small
            color: Theme.colours.surface
            border.width: 1
            border.color: Theme.colours.border

            Column {
                id: details
                x: Theme.spacing.s
                y: Theme.spacing.s
                width: card.width - 2 * Theme.spacing.s
                spacing: 2

                Text {
                    width: parent.width
                    text: card.title
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.callout
                    font.weight: Font.Medium
                    color: Theme.colours.text
                }
                Text {
                    width: parent.width
                    text: card.line
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.caption
                    color: Theme.colours.secondaryText
                }
                Row {
                    spacing: Theme.spacing.xs

                    IconButton {
                        objectName: "cardBack"
                        visible: card.stageColumn !== null && card.stageColumn.previousStage.length > 0
                        symbol: "chevron.left"
                        text: card.stageColumn ? qsTr("Back to %1").arg(card.stageColumn.previousStage) : ""
                        onClicked: card.stageColumn.view.moveItem(card.itemId, card.stageColumn.previousStage)
                    }
                    IconButton {
                        objectName: "cardOn"
                        visible: card.stageColumn !== null && card.stageColumn.nextStage.length > 0
                        symbol: "chevron.right"
                        text: card.stageColumn ? qsTr("On to %1").arg(card.stageColumn.nextStage) : ""
                        onClicked: card.stageColumn.view.moveItem(card.itemId, card.stageColumn.nextStage)
                    }
                }
            }
        }
    }
}
