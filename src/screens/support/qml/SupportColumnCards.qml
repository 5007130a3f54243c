import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// One column's cards. A card is dragged to another column, or moved with
// Ctrl+Left and Ctrl+Right; Enter opens it, arrows move between cards. In
// the "By client" view the cards are grouped under their customer.
ListView {
    id: column

    required property NativeSupportView support
    required property Item dragLayer

    clip: true
    spacing: Theme.spacing.xs
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: true
    ScrollBar.vertical: ScrollBar {}

    section.property: support.viewId === "client" ? "client" : ""
    section.delegate: Label {
        required property string section
        width: ListView.view.width
        topPadding: Theme.spacing.s
        text: section.length > 0 ? section : qsTr("No customer")
        color: Theme.colours.secondaryText
        font.pixelSize: Theme.type.footnote
        font.weight: Font.DemiBold
    }

    delegate: Item {
        id: slot

        required property int index
        required property string taskId
        required property string title
        required property string priority
        required property string priorityLabel
        required property string people
        required property string due
        required property bool overdue
        required property string subtasks
        required property int comments
        required property string logged
        required property bool recurring
        required property bool timing
        readonly property SupportColumnCards list: ListView.view as SupportColumnCards

        width: ListView.view.width
        implicitHeight: card.implicitHeight

        Rectangle {
            id: card
            objectName: slot.taskId
            width: slot.width
            implicitHeight: content.implicitHeight + Theme.spacing.m * 2
            radius: Theme.radii.medium
            color: Theme.colours.raised
            border.width: 1
            border.color: slot.list && slot.list.currentIndex === slot.index && slot.list.activeFocus
                          ? Theme.colours.focusRing : Theme.colours.border
            activeFocusOnTab: true
            Accessible.role: Accessible.ListItem
            Accessible.name: slot.title
            Accessible.description: slot.due.length > 0 ? slot.people + ", " + slot.due : slot.people

            Drag.keys: ["support-card"]
            Drag.source: card
            Drag.hotSpot.x: width / 2
            Drag.hotSpot.y: height / 2

            states: State {
                when: dragger.active
                ParentChange {
                    target: card
                    parent: slot.list ? slot.list.dragLayer : slot
                }
            }

            DragHandler {
                id: dragger
                // Dropped by hand: bound to `active`, the drag would end
                // before the drop could reach the column under it.
                onActiveChanged: {
                    if (active) {
                        card.Drag.active = true
                        return
                    }
                    card.Drag.drop()
                    card.x = 0
                    card.y = 0
                }
            }
            TapHandler {
                onTapped: {
                    slot.list.currentIndex = slot.index
                    slot.list.support.openTask(slot.taskId)
                }
            }
            Keys.onPressed: event => {
                if (!slot.list)
                    return
                if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter)) {
                    slot.list.support.openTask(slot.taskId)
                    event.accepted = true
                } else if (event.modifiers & Qt.ControlModifier
                           && (event.key === Qt.Key_Right || event.key === Qt.Key_Left)) {
                    slot.list.support.moveCardBy(slot.taskId, event.key === Qt.Key_Right ? 1 : -1)
                    event.accepted = true
                }
            }

            ColumnLayout {
                id: content
                anchors.fill: parent
                anchors.margins: Theme.spacing.m
                spacing: Theme.spacing.xxs

                Label {
                    text: slot.title
                    color: Theme.colours.text
                    font.pixelSize: Theme.type.callout
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    visible: text.length > 0
                    text: slot.people
                    color: Theme.colours.secondaryText
                    font.pixelSize: Theme.type.footnote
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                RowLayout {
                    spacing: Theme.spacing.s
                    Layout.fillWidth: true
                    Layout.minimumWidth: 0

                    Label {
                        visible: slot.priority === "urgent" || slot.priority === "high"
                        text: slot.priorityLabel
                        color: slot.priority === "urgent" ? Theme.colours.danger : Theme.colours.warning
                        font.pixelSize: Theme.type.caption
                        font.weight: Font.DemiBold
                    }
                    // Takes what the marks leave, so a narrow column shortens it first.
                    Label {
                        text: slot.due
                        color: slot.overdue ? Theme.colours.danger : Theme.colours.tertiaryText
                        font.pixelSize: Theme.type.caption
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                        Layout.minimumWidth: 0
                    }
                    Icon {
                        visible: slot.recurring
                        symbol: "repeat"
                        size: 14
                        color: Theme.colours.tertiaryText
                    }
                    Icon {
                        visible: slot.timing
                        symbol: "timer"
                        size: 14
                        color: Theme.colours.accent
                    }
                    Icon {
                        visible: slot.subtasks.length > 0
                        symbol: "checklist"
                        size: 14
                        color: Theme.colours.tertiaryText
                    }
                    Label {
                        visible: slot.subtasks.length > 0
                        text: slot.subtasks
                        color: Theme.colours.tertiaryText
                        font.pixelSize: Theme.type.caption
                    }
                    Icon {
                        visible: slot.comments > 0
                        symbol: "message"
                        size: 14
                        color: Theme.colours.tertiaryText
                    }
                    Label {
                        visible: slot.comments > 0
                        text: slot.comments
                        color: Theme.colours.tertiaryText
                        font.pixelSize: Theme.type.caption
                    }
                    Label {
                        visible: slot.logged.length > 0
                        text: slot.logged
                        color: Theme.colours.tertiaryText
                        font.pixelSize: Theme.type.caption
                    }
                }
            }
        }
    }
}
