import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// The toast that offers "Undo" while `toast` (a NativeUndoToast the screen
// made) has an offer out: what was done, the "Undo" button and a close
// button. Anchor it to the bottom centre of the screen it belongs to.
Rectangle {
    id: toastView

    required property NativeUndoToast toast

    visible: toast.shown
    implicitWidth: row.implicitWidth + Theme.spacing.l + Theme.spacing.xs
    implicitHeight: 44
    radius: Theme.radii.large
    color: Theme.colours.toast
    Accessible.role: Accessible.AlertMessage
    Accessible.name: toast.text

    RowLayout {
        id: row

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacing.l
        spacing: Theme.spacing.m

        Text {
            text: toastView.toast.text
            font.pixelSize: Theme.type.callout
            color: Theme.colours.toastText
        }
        ActionButton {
            objectName: "undo"
            kind: ActionButton.Plain
            text: qsTr("Undo")
            ink: Theme.dark ? Qt.darker(Theme.colours.accent, 1.6) : Qt.lighter(Theme.colours.accent, 1.5)
            leftPadding: Theme.spacing.s
            rightPadding: Theme.spacing.s
            onClicked: toastView.toast.undo()
        }
        IconButton {
            symbol: "xmark"
            iconSize: 16
            text: qsTr("Close")
            iconColour: Theme.colours.toastText
            onClicked: toastView.toast.dismiss()
        }
    }
}
