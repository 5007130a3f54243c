import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import PiloTarn.Chat
import PiloTarn.Design

// Where a message is written: Enter sends, Shift+Enter breaks the line.
// The room's composer holds the screen's draft and staged files and is
// closed while a send is under way; a thread's composer sends replies and
// keeps its text until the reply shows in the thread.
ColumnLayout {
    id: composer

    required property NativeChatView chat
    property bool inThread: false
    property string placeholder
    // A thread reply on its way: its text clears once the reply shows.
    property bool replying: false
    // How many replies the thread shows: one more means the reply arrived.
    property int replies
    // Typing goes on where it was once the composer opens again after a send.
    property bool refocus: false

    spacing: Theme.spacing.xs

    function send() {
        refocus = input.activeFocus
        if (inThread) {
            replying = true
            chat.sendReply(input.text)
        } else {
            chat.send()
        }
    }

    function keyReturn(event) {
        if (event.modifiers & Qt.ShiftModifier)
            event.accepted = false
        else
            send()
    }

    Flow {
        visible: !composer.inThread && composer.chat.stagedFiles.length > 0
        spacing: Theme.spacing.xs
        Layout.fillWidth: true
        Repeater {
            model: composer.inThread ? [] : composer.chat.stagedFiles
            onItemAdded: (index, item) => item.clicked.connect(
                             () => composer.chat.unstageFile(composer.chat.stagedFiles[index].id))
            delegate: ActionButton {
                required property var modelData
                objectName: "stagedFile"
                kind: ActionButton.Secondary
                symbol: "xmark"
                text: modelData.name
                Accessible.description: qsTr("Remove from the message")
            }
        }
    }

    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        IconButton {
            visible: !composer.inThread
            enabled: !composer.chat.sending
            symbol: "plus"
            text: qsTr("Attach a file")
            Layout.alignment: Qt.AlignBottom
            onClicked: picker.open()
        }

        ScrollView {
            Layout.fillWidth: true
            Layout.maximumHeight: 160
            Layout.preferredHeight: input.implicitHeight

            TextArea {
                id: input

                objectName: composer.inThread ? "chatThreadComposer" : "chatComposer"
                enabled: composer.inThread || (!composer.chat.sending && composer.chat.selectedRoom.length > 0)
                text: composer.inThread ? "" : composer.chat.composerText
                placeholderText: composer.placeholder
                placeholderTextColor: Theme.colours.tertiaryText
                color: Theme.colours.text
                font.pixelSize: Theme.type.body
                wrapMode: TextEdit.Wrap
                padding: Theme.spacing.s
                Accessible.name: composer.placeholder
                Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                // Files and images on the clipboard are attached; text pastes as text.
                Keys.onPressed: event => {
                    if (!composer.inThread && event.matches(StandardKey.Paste) && composer.chat.pasteFiles())
                        event.accepted = true
                }
                Keys.onReturnPressed: event => composer.keyReturn(event)
                Keys.onEnterPressed: event => composer.keyReturn(event)
                background: Rectangle {
                    radius: Theme.radii.large
                    color: Theme.colours.surface
                    border.color: input.activeFocus ? Theme.colours.accent : Theme.colours.border
                    FocusRing { shown: input.activeFocus }
                }
                onEnabledChanged: if (enabled && composer.refocus) {
                    composer.refocus = false
                    forceActiveFocus()
                }
                onTextChanged: if (!composer.inThread && text !== composer.chat.composerText) composer.chat.composerText = text

                // Files dropped here are attached as if chosen; dropped text is text.
                DropArea {
                    enabled: !composer.inThread && input.enabled
                    anchors.fill: parent
                    onEntered: drag => drag.accepted = drag.hasUrls
                    onDropped: drop => {
                        if (composer.chat.stageUrls(drop.urls) > 0)
                            drop.accept(Qt.CopyAction)
                    }
                }
            }
        }

        IconButton {
            objectName: composer.inThread ? "chatThreadSend" : "chatSend"
            enabled: input.enabled && input.text.trim().length > 0
                     || !composer.inThread && input.enabled && composer.chat.stagedFiles.length > 0
            symbol: "paperplane"
            lit: enabled
            text: composer.chat.sending && !composer.inThread ? qsTr("Sending…") : qsTr("Send")
            Layout.alignment: Qt.AlignBottom
            onClicked: composer.send()
        }
    }

    onRepliesChanged: if (replying) {
        replying = false
        input.clear()
    }
    Connections {
        target: composer.chat
        enabled: composer.inThread && composer.replying
        function onErrorTextChanged() {
            composer.replying = false
        }
    }

    FileDialog {
        id: picker
        title: qsTr("Attach a file")
        onAccepted: composer.chat.stageFile(decodeURIComponent(String(selectedFile).replace(/^file:\/\//, "")))
    }
}
