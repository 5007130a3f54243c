import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Assistant
import PiloTarn.Design

// The assistant beside any screen: a header with its close button over the
// conversation.
Pane {
    id: panel

    required property TarnPiloConversation conversation
    property string page
    property string draft
    property string personName

    signal draftEdited(string text)
    signal showHistoryRequested()
    signal closeRequested()

    padding: Theme.spacing.l
    background: Rectangle { color: Theme.colours.sidebar }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.m

        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true
            Icon {
                symbol: "sparkles"
                size: 20
                color: Theme.colours.accent
            }
            Text {
                text: qsTr("Pilo")
                font.pixelSize: Theme.type.title3
                font.weight: Font.DemiBold
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            IconButton {
                symbol: "xmark"
                text: qsTr("Close Pilo")
                onClicked: panel.closeRequested()
            }
        }

        PiloConversationView {
            conversation: panel.conversation
            page: panel.page
            draft: panel.draft
            personName: panel.personName
            Layout.fillWidth: true
            Layout.fillHeight: true
            onDraftEdited: text => panel.draftEdited(text)
            onShowHistoryRequested: panel.showHistoryRequested()
        }
    }
}
