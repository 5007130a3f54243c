import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Calls
import PiloTarn.Design

// The recording being played: play or pause, the place in it (dragged to
// seek), the time and the speed.
Rectangle {
    id: bar

    required property NativeCallPlayer player

    objectName: "callPlayer"
    implicitHeight: row.implicitHeight + 2 * Theme.spacing.s
    color: Theme.colours.surface

    Rectangle {
        anchors.top: parent.top
        width: parent.width
        height: 1
        color: Theme.colours.separator
    }

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: Theme.spacing.xl
        anchors.rightMargin: Theme.spacing.xl
        spacing: Theme.spacing.m

        IconButton {
            objectName: "playerToggle"
            symbol: bar.player.playing ? "pause.fill" : "play.fill"
            text: bar.player.playing ? qsTr("Pause") : qsTr("Play")
            enabled: bar.player.ready
            onClicked: bar.player.toggle()
        }
        Text {
            text: bar.player.positionLabel
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
        }
        Slider {
            objectName: "playerSeek"
            from: 0
            to: Math.max(1, bar.player.duration)
            value: bar.player.position
            enabled: bar.player.ready
            Accessible.name: qsTr("Place in the recording")
            onMoved: bar.player.seek(value)
            Layout.fillWidth: true
        }
        Text {
            text: bar.player.durationLabel
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
        }
        ActionButton {
            objectName: "playerSpeed1"
            kind: bar.player.speed === 1 ? ActionButton.Primary : ActionButton.Plain
            text: qsTr("1×")
            leftPadding: Theme.spacing.s
            rightPadding: Theme.spacing.s
            Accessible.name: qsTr("Speed 1")
            onClicked: bar.player.speed = 1
        }
        ActionButton {
            objectName: "playerSpeed15"
            kind: bar.player.speed === 1.5 ? ActionButton.Primary : ActionButton.Plain
            text: qsTr("1.5×")
            leftPadding: Theme.spacing.s
            rightPadding: Theme.spacing.s
            Accessible.name: qsTr("Speed 1.5")
            onClicked: bar.player.speed = 1.5
        }
        ActionButton {
            objectName: "playerSpeed2"
            kind: bar.player.speed === 2 ? ActionButton.Primary : ActionButton.Plain
            text: qsTr("2×")
            leftPadding: Theme.spacing.s
            rightPadding: Theme.spacing.s
            Accessible.name: qsTr("Speed 2")
            onClicked: bar.player.speed = 2
        }
        Text {
            visible: bar.player.errorText.length > 0
            text: bar.player.errorText
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.danger
        }
    }
}
