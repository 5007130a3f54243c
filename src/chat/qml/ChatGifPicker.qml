import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// The GIFs "/gif QUERY" found, as small previews; choosing one sends it as
// a message of its own, and the picker closes once it is sent. Without a GIF provider the service's note shows.
Popup {
    id: picker

    required property NativeChatView chat

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(520, (parent ? parent.width : 560) - 2 * Theme.spacing.xl)
    height: Math.min(480, (parent ? parent.height : 520) - 2 * Theme.spacing.xl)
    padding: Theme.spacing.l
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    onClosed: chat.closeGifPicker()

    Overlay.modal: Rectangle { color: Theme.colours.scrim }

    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.width: 1
        border.color: Theme.colours.separator
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.m

        RowLayout {
            Layout.fillWidth: true
            Text {
                text: qsTr("GIFs for “%1”").arg(picker.chat.gifPicker.query)
                font.pixelSize: Theme.type.title3
                font.weight: Font.DemiBold
                color: Theme.colours.text
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            BusyIndicator {
                visible: picker.chat.gifPicker.busy
                implicitWidth: 24
                implicitHeight: 24
            }
            IconButton {
                symbol: "xmark"
                text: qsTr("Close")
                onClicked: picker.close()
            }
        }

        Text {
            objectName: "gifNote"
            visible: text.length > 0
            text: picker.chat.gifPicker.message
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.callout
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }

        ChatGifGrid {
            objectName: "gifResults"
            chat: picker.chat
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }

    Connections {
        target: picker.chat
        function onGifPickerOpenChanged() {
            if (picker.chat.gifPickerOpen)
                picker.open()
            else
                picker.close()
        }
    }
}
