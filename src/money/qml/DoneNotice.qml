import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// A change that went through, said for a few seconds at the bottom of the
// page: `show(text)` from the view's `done`.
Rectangle {
    id: noticeView

    function show(text: string) {
        notice.show(text)
    }

    visible: notice.shown
    implicitWidth: row.implicitWidth + Theme.spacing.l + Theme.spacing.xs
    implicitHeight: 44
    radius: Theme.radii.large
    color: Theme.colours.toast
    Accessible.role: Accessible.AlertMessage
    Accessible.name: notice.text

    NativeDoneNotice {
        id: notice
    }

    RowLayout {
        id: row

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacing.l
        spacing: Theme.spacing.m

        Icon {
            symbol: "checkmark"
            size: 18
            color: Theme.colours.success
        }
        Text {
            objectName: "doneNotice"
            text: notice.text
            font.pixelSize: Theme.type.callout
            color: Theme.colours.toastText
        }
        IconButton {
            symbol: "xmark"
            iconSize: 16
            text: qsTr("Close")
            iconColour: Theme.colours.toastText
            onClicked: notice.dismiss()
        }
    }
}
