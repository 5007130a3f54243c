import QtQuick
import PiloTarn.Design

// One recurring charge of the chosen client: how much, how often, on which
// card, when it next runs, and what may be done with it from its state.
Item {
    id: line

    required property string scheduleId
    required property string amount
    required property string interval
    required property string nextOn
    required property string status
    required property string card

    signal pauseAsked()
    signal resumeAsked()
    signal cancelAsked()

    readonly property bool paused: status === "Paused"

    width: parent ? parent.width : implicitWidth
    implicitHeight: column.implicitHeight + 2 * Theme.spacing.s

    Column {
        id: column

        y: Theme.spacing.s
        width: parent.width
        spacing: Theme.spacing.xs

        Row {
            spacing: Theme.spacing.s
            Icon {
                symbol: line.paused ? "pause.fill" : "repeat"
                size: 18
                color: line.paused ? Theme.colours.secondaryText : Theme.colours.accent
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                text: line.interval === "weekly" ? qsTr("%1 every week").arg(line.amount)
                                                 : qsTr("%1 every month").arg(line.amount)
                font.pixelSize: Theme.type.callout
                font.weight: Font.DemiBold
                color: Theme.colours.text
                anchors.verticalCenter: parent.verticalCenter
            }
        }
        Text {
            width: parent.width
            text: line.paused ? qsTr("Paused · %1").arg(line.card)
                              : qsTr("Next on %1 · %2").arg(line.nextOn).arg(line.card)
            elide: Text.ElideRight
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
        }
        Row {
            spacing: Theme.spacing.xs
            ActionButton {
                objectName: "pauseSchedule"
                visible: !line.paused
                text: qsTr("Pause")
                kind: ActionButton.Plain
                onClicked: line.pauseAsked()
            }
            ActionButton {
                objectName: "resumeSchedule"
                visible: line.paused
                text: qsTr("Resume")
                kind: ActionButton.Plain
                onClicked: line.resumeAsked()
            }
            ActionButton {
                objectName: "cancelSchedule"
                text: qsTr("Cancel")
                kind: ActionButton.Plain
                onClicked: line.cancelAsked()
            }
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.colours.separator
    }
}
