import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// A channel's settings: its name, whether it is private, who is in it, and
// archiving it, which asks first. The room list loads again once saved.
Popup {
    id: sheet

    required property NativeChatView chat
    // The settings shown are the open room's, once they have loaded.
    readonly property var settings: chat.roomSettings
    readonly property bool ready: settings.id === chat.selectedRoom

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(440, (parent ? parent.width : 480) - 2 * Theme.spacing.xl)
    padding: Theme.spacing.xl
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    onOpened: chat.loadRoomSettings()
    onReadyChanged: if (ready) {
        name.text = settings.name
        isPrivate.checked = settings["private"]
        for (let i = 0; i < memberBoxes.count; ++i)
            tick(i)
    }

    function tick(index) {
        const box = memberBoxes.itemAt(index) as CheckBox
        if (box)
            box.checked = ready && settings.members.indexOf(chat.people[index].id) >= 0
    }

    Overlay.modal: Rectangle { color: Theme.colours.scrim }

    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.width: 1
        border.color: Theme.colours.separator
    }

    function save(archived) {
        const chosen = []
        for (let i = 0; i < memberBoxes.count; ++i) {
            const box = memberBoxes.itemAt(i) as CheckBox
            if (box && box.checked)
                chosen.push(sheet.chat.people[i].id)
        }
        chat.saveRoomSettings(name.text, isPrivate.checked, archived, chosen)
        close()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.m

        Text {
            text: qsTr("Channel settings")
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        LoadingPlaceholder {
            visible: !sheet.ready
            rows: 3
            Layout.fillWidth: true
        }

        FormField {
            id: name
            objectName: "roomSettingsName"
            visible: sheet.ready
            label: qsTr("Name")
            Layout.fillWidth: true
            onAccepted: if (text.trim().length > 0) sheet.save(false)
        }
        CheckBox {
            id: isPrivate
            visible: sheet.ready
            text: qsTr("Private")
        }
        Text {
            visible: sheet.ready
            text: qsTr("Members")
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
        }
        Flow {
            visible: sheet.ready
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            Repeater {
                id: memberBoxes
                model: sheet.chat.people
                onItemAdded: index => sheet.tick(index)
                delegate: CheckBox {
                    required property var modelData
                    text: modelData.name
                }
            }
        }

        RowLayout {
            spacing: Theme.spacing.s
            Layout.topMargin: Theme.spacing.s
            ActionButton {
                objectName: "roomSettingsArchive"
                enabled: sheet.ready
                text: qsTr("Archive…")
                onClicked: archiveSheet.open()
            }
            Item { Layout.fillWidth: true }
            ActionButton {
                text: qsTr("Cancel")
                onClicked: sheet.close()
            }
            ActionButton {
                objectName: "roomSettingsSave"
                enabled: sheet.ready && name.text.trim().length > 0
                text: qsTr("Save")
                kind: ActionButton.Primary
                onClicked: sheet.save(false)
            }
        }
    }

    ConfirmSheet {
        id: archiveSheet
        title: qsTr("Archive this channel?")
        text: qsTr("It leaves everyone's room list; its messages are kept.")
        confirmText: qsTr("Archive")
        destructive: true
        onConfirmed: sheet.save(true)
    }
}
