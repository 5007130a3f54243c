import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// The running huddle along the window's foot, whichever screen is shown:
// its room, status and people, with Mute and Leave.
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
                                        spacing: Theme.spacing.xs
                    Avatar {
                        name: person.name
                        size: 20
                    }
                    Text {
                        text: person.muted ? qsTr("%1 (muted)").arg(person.name) : person.name
                        color: person.muted ? Theme.colours.secondaryText : Theme.colours.text
                    }
                }
            }
            ActionButton {
                objectName: "huddleMute"
                text: bar.huddle.muted ? qsTr("Unmute") : qsTr("Mute")
                onClicked: bar.huddle.toggleMute()
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
}
