import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// The running huddle along the window's foot, whichever screen is shown:
// the others' cameras and screens as tiles (a screen larger), then its room,
// status and people with their marks, and Mute, Camera, Share and Leave.
Pane {
    id: bar

    required property NativeHuddleView huddle

    visible: huddle.running
    padding: Theme.spacing.s
    background: Rectangle {
        color: Theme.colours.raised
        Rectangle {
            width: parent.width
            height: 1
            color: Theme.colours.separator
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.xs

        RowLayout {
            objectName: "huddleTiles"
            visible: bar.huddle.running && (bar.huddle.cameraOn || others.contentWidth > 0)
            spacing: Theme.spacing.s
            Layout.fillWidth: true

            HuddleVideoTile {
                objectName: "huddleSelfView"
                visible: bar.huddle.cameraOn
                track: bar.huddle.selfView
                name: qsTr("You")
            }
            HuddleTileStrip {
                id: others
                huddle: bar.huddle
                Layout.fillWidth: true
                Layout.preferredHeight: implicitHeight
            }
        }

        RowLayout {
            spacing: Theme.spacing.m
            Layout.fillWidth: true

            Icon {
                symbol: "waveform"
                color: bar.huddle.status === "Live" ? Theme.colours.success : Theme.colours.warning
            }
            Text {
                objectName: "huddleRoom"
                text: "# " + bar.huddle.roomName
                font.weight: Font.DemiBold
                color: Theme.colours.text
            }
            Text {
                objectName: "huddleStatus"
                text: bar.huddle.status
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
            }
            ListView {
                objectName: "huddleParticipants"
                orientation: ListView.Horizontal
                spacing: Theme.spacing.m
                clip: true
                interactive: false
                model: bar.huddle.participants
                implicitHeight: Theme.type.callout * 2
                Layout.fillWidth: true
                delegate: RowLayout {
                    id: person
                    required property string name
                    required property bool muted
                    required property bool video
                    required property bool screen
                    spacing: Theme.spacing.xs
                    Avatar {
                        name: person.name
                        size: 20
                    }
                    Text {
                        text: person.muted ? qsTr("%1 (muted)").arg(person.name) : person.name
                        color: person.muted ? Theme.colours.secondaryText : Theme.colours.text
                    }
                    Icon {
                        visible: person.video
                        symbol: "video"
                        size: 14
                    }
                    Icon {
                        visible: person.screen
                        symbol: "display"
                        size: 14
                    }
                }
            }
            ActionButton {
                objectName: "huddleMute"
                text: bar.huddle.muted ? qsTr("Unmute") : qsTr("Mute")
                onClicked: bar.huddle.toggleMute()
            }
            ActionButton {
                objectName: "huddleCamera"
                enabled: !bar.huddle.cameraChanging
                text: bar.huddle.cameraOn ? qsTr("Stop video") : qsTr("Video")
                onClicked: bar.huddle.toggleCamera()
            }
            ActionButton {
                objectName: "huddleScreen"
                enabled: !bar.huddle.screenChanging
                text: bar.huddle.screenOn ? qsTr("Stop sharing") : qsTr("Share screen")
                onClicked: bar.huddle.screenOn ? bar.huddle.toggleScreen() : shareSheet.open()
            }
            ActionButton {
                objectName: "huddleLeave"
                kind: ActionButton.Destructive
                text: qsTr("Leave")
                onClicked: bar.huddle.leave()
            }
        }

        Text {
            objectName: "huddleNotice"
            visible: text.length > 0
            text: bar.huddle.notice
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.danger
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }

    ConfirmSheet {
        id: shareSheet
        objectName: "huddleShareSheet"
        title: qsTr("Share your screen?")
        text: qsTr("Everyone in the huddle sees your whole screen until you stop sharing.")
        confirmText: qsTr("Share screen")
        onConfirmed: bar.huddle.toggleScreen()
    }
}
