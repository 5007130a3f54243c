import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// A new room: a direct message with one person (made, or the one there
// already reopened), or a channel with a name, maybe private, with the
// people chosen. The room opens once it is made.
Popup {
    id: sheet

    required property NativeChatView chat
    property bool channel: false

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(440, (parent ? parent.width : 480) - 2 * Theme.spacing.xl)
    padding: Theme.spacing.xl
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    onOpened: name.text = ""
    onClosed: chat.clearCreateMode()

    Overlay.modal: Rectangle { color: Theme.colours.scrim }

    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.width: 1
        border.color: Theme.colours.separator
    }

    function createChannel() {
        const members = []
        for (let i = 0; i < memberBoxes.count; ++i) {
            const box = memberBoxes.itemAt(i) as CheckBox
            if (box && box.checked)
                members.push(sheet.chat.people[i].id)
        }
        chat.createChannel(name.text.trim(), isPrivate.checked, members)
        close()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.m

        Text {
            text: qsTr("New room")
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        RowLayout {
            spacing: Theme.spacing.s
            ActionButton {
                text: qsTr("Direct message")
                kind: sheet.channel ? ActionButton.Secondary : ActionButton.Primary
                onClicked: sheet.channel = false
            }
            ActionButton {
                objectName: "newChannel"
                text: qsTr("Channel")
                kind: sheet.channel ? ActionButton.Primary : ActionButton.Secondary
                onClicked: sheet.channel = true
            }
        }

        // Choosing a person makes the direct message at once.
        ColumnLayout {
            visible: !sheet.channel
            spacing: 2
            Layout.fillWidth: true
            Repeater {
                model: sheet.chat.people
                onItemAdded: (index, item) => item.clicked.connect(() => {
                    sheet.chat.createDirectMessage(sheet.chat.people[index].id)
                    sheet.close()
                })
                delegate: ListRow {
                    required property var modelData
                    text: modelData.name
                    avatarName: modelData.name
                    Layout.fillWidth: true
                }
            }
        }

        FormField {
            id: name
            objectName: "newChannelName"
            visible: sheet.channel
            label: qsTr("Name")
            placeholderText: qsTr("e.g. launch-plans")
            Layout.fillWidth: true
            onAccepted: if (text.trim().length > 0) sheet.createChannel()
        }
        CheckBox {
            id: isPrivate
            visible: sheet.channel
            text: qsTr("Private")
        }
        Text {
            visible: sheet.channel
            text: qsTr("Members")
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
        }
        Flow {
            visible: sheet.channel
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            Repeater {
                id: memberBoxes
                model: sheet.chat.people
                delegate: CheckBox {
                    required property var modelData
                    text: modelData.name
                }
            }
        }

        RowLayout {
            spacing: Theme.spacing.s
            Layout.topMargin: Theme.spacing.s
            Item { Layout.fillWidth: true }
            ActionButton {
                text: qsTr("Cancel")
                onClicked: sheet.close()
            }
            ActionButton {
                objectName: "newChannelCreate"
                visible: sheet.channel
                enabled: name.text.trim().length > 0
                text: qsTr("Create")
                kind: ActionButton.Primary
                onClicked: sheet.createChannel()
            }
        }
    }
}
