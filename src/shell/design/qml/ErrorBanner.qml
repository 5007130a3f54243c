import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// A failure above the content it concerns, in the error's own words (the
// service's or the platform's text, never a made-up summary). `retryable`
// adds "Try again", which emits `retry`; `closable` adds a close button.
Rectangle {
    id: banner

    property string text
    property bool retryable: false
    property bool closable: false

    signal retry()
    signal closed()

    visible: text.length > 0
    implicitHeight: row.implicitHeight + 2 * Theme.spacing.s
    radius: Theme.radii.medium
    color: Theme.colours.dangerSoft
    border.width: 1
    border.color: Qt.rgba(Theme.colours.danger.r, Theme.colours.danger.g, Theme.colours.danger.b, 0.35)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: Theme.spacing.m
        anchors.rightMargin: Theme.spacing.xs
        spacing: Theme.spacing.s

        Icon {
            symbol: "exclamationmark.triangle"
            size: 18
            color: Theme.colours.danger
        }
        Text {
            objectName: "errorText"
            text: banner.text
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            Layout.fillWidth: true
        }
        ActionButton {
            visible: banner.retryable
            kind: ActionButton.Plain
            text: qsTr("Try again")
            onClicked: banner.retry()
        }
        IconButton {
            visible: banner.closable
            symbol: "xmark"
            iconSize: 16
            text: qsTr("Close")
            onClicked: banner.closed()
        }
    }
}
