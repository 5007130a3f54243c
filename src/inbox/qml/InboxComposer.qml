import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Inbox
import PiloTarn.Design

// The reply box: Enter sends, Shift+Enter breaks the line, "@" offers the
// thread's people, and "Draft with Pilo" writes a suggestion to edit where
// the assistant can. Closed while a reply is on its way.
ColumnLayout {
    id: composer

    required property NativeInboxView inbox

    spacing: Theme.spacing.xs

    function keyReturn(event) {
        if (event.modifiers & Qt.ShiftModifier)
            event.accepted = false
        else
            inbox.send()
    }

    Flow {
        visible: composer.inbox.mentionSuggestions.length > 0
        spacing: Theme.spacing.xs
        Layout.fillWidth: true
        Repeater {
            model: composer.inbox.mentionSuggestions
            onItemAdded: (index, item) => item.clicked.connect(() => {
                composer.inbox.insertMention(composer.inbox.mentionSuggestions[index].id)
                input.forceActiveFocus()
                input.cursorPosition = input.length
            })
            delegate: ActionButton {
                required property var modelData
                objectName: "mentionSuggestion"
                text: "@" + modelData.name
            }
        }
    }

    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        IconButton {
            objectName: "draftWithPilo"
            visible: composer.inbox.aiConfigured
            enabled: !composer.inbox.drafting && !composer.inbox.sending
            symbol: "sparkles"
            text: composer.inbox.drafting ? qsTr("Drafting…") : qsTr("Draft with Pilo")
            Layout.alignment: Qt.AlignBottom
            onClicked: composer.inbox.draftWithPilo()
        }

        ScrollView {
            Layout.fillWidth: true
            Layout.maximumHeight: 160
            Layout.preferredHeight: input.implicitHeight

            TextArea {
                id: input

                objectName: "inboxComposer"
                enabled: !composer.inbox.sending
                text: composer.inbox.composerText
                placeholderText: qsTr("Reply to %1").arg(composer.inbox.threadTitle)
                placeholderTextColor: Theme.colours.tertiaryText
                color: Theme.colours.text
                font.pixelSize: Theme.type.body
                wrapMode: TextEdit.Wrap
                padding: Theme.spacing.s
                Accessible.name: placeholderText
                Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                Keys.onReturnPressed: event => composer.keyReturn(event)
                Keys.onEnterPressed: event => composer.keyReturn(event)
                background: Rectangle {
                    radius: Theme.radii.large
                    color: Theme.colours.surface
                    border.color: input.activeFocus ? Theme.colours.accent : Theme.colours.border
                    FocusRing { shown: input.activeFocus }
                }
                onTextChanged: if (text !== composer.inbox.composerText) composer.inbox.composerText = text
            }
        }

        IconButton {
            objectName: "inboxSend"
            enabled: input.enabled && input.text.trim().length > 0
            symbol: "paperplane"
            lit: enabled
            text: composer.inbox.sending ? qsTr("Sending…") : qsTr("Send")
            Layout.alignment: Qt.AlignBottom
            onClicked: composer.inbox.send()
        }
    }
}
