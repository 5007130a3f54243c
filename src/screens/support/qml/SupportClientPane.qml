import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Support
import PiloTarn.Design

// A customer's support page beside the board: how to reach them, the time
// spent for them, the team's notes on them and their tasks.
Pane {
    id: pane

    required property NativeSupportView support

    padding: Theme.spacing.m
    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.surface
        border.width: 1
        border.color: Theme.colours.separator
    }

    ScrollView {
        id: scroller
        anchors.fill: parent
        contentWidth: availableWidth

        ColumnLayout {
            width: scroller.availableWidth
            spacing: Theme.spacing.s

            RowLayout {
                Layout.fillWidth: true
                Label {
                    text: pane.support.clientName
                    color: Theme.colours.text
                    font.pixelSize: Theme.type.title3
                    font.weight: Font.DemiBold
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                IconButton {
                    symbol: "xmark"
                    text: qsTr("Close (Escape)")
                    onClicked: pane.support.closeClient()
                }
            }
            Label {
                text: pane.support.clientContact
                color: Theme.colours.secondaryText
                font.pixelSize: Theme.type.footnote
            }
            Label {
                text: qsTr("%1 spent on their work").arg(pane.support.clientLogged)
                color: Theme.colours.secondaryText
                font.pixelSize: Theme.type.footnote
            }

            SectionHeader { text: qsTr("Notes"); Layout.fillWidth: true }
            SupportNotes {
                model: pane.support.clientNotes
                Layout.fillWidth: true
            }
            TextField {
                placeholderText: qsTr("Add a note")
                onAccepted: {
                    pane.support.addClientNote(text)
                    clear()
                }
                Layout.fillWidth: true
            }

            SectionHeader { text: qsTr("Tasks"); Layout.fillWidth: true }
            SupportCardList {
                model: pane.support.clientTasks
                onOpened: taskId => pane.support.openTask(taskId)
                Layout.fillWidth: true
            }
        }
    }
}
