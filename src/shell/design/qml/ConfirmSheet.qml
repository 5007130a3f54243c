import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// A modal sheet that asks before an action: the question, what follows from
// it, and two buttons. `destructive` draws the confirming button in the
// danger colour. Escape or "Cancel" closes it without acting; the confirming
// button emits `confirmed` and closes it. Put extra fields in as children.
Popup {
    id: sheet

    property string title
    property string text
    property string confirmText: qsTr("Confirm")
    property bool destructive: false
    default property alias content: extra.data

    signal confirmed()

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(440, (parent ? parent.width : 480) - 2 * Theme.spacing.xl)
    padding: Theme.spacing.xl
    closePolicy: Popup.CloseOnEscape
    onOpened: cancelButton.forceActiveFocus(Qt.TabFocusReason)

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

        Text {
            text: sheet.title
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
            Layout.fillWidth: true
        }
        Text {
            visible: text.length > 0
            text: sheet.text
            wrapMode: Text.Wrap
            lineHeight: 1.15
            font.pixelSize: Theme.type.callout
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }
        ColumnLayout {
            id: extra

            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.topMargin: Theme.spacing.s
            Item { Layout.fillWidth: true }
            ActionButton {
                id: cancelButton

                objectName: "sheetCancel"
                text: qsTr("Cancel")
                onClicked: sheet.close()
            }
            ActionButton {
                objectName: "sheetConfirm"
                text: sheet.confirmText
                kind: sheet.destructive ? ActionButton.Destructive : ActionButton.Primary
                onClicked: {
                    sheet.confirmed()
                    sheet.close()
                }
            }
        }
    }
}
