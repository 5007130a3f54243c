import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// A change that went through, said for a few seconds: `show(text)` from the
// view's `done`. Laid out as the last row of a page it takes no room and
// draws over the page's foot.
Item {
    function show(text: string) {
        notice.show(text)
    }

    z: 1
    implicitHeight: 0

    NativeDoneNotice {
        id: notice
    }

    Rectangle {
        visible: notice.shown
        anchors.bottom: parent.top
        anchors.horizontalCenter: parent.horizontalCenter
        implicitWidth: row.implicitWidth + Theme.spacing.l + Theme.spacing.xs
        implicitHeight: 44
        radius: Theme.radii.large
        color: Theme.colours.toast
        Accessible.role: Accessible.AlertMessage
        Accessible.name: notice.text

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
}
