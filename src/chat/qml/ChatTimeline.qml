import QtQuick
import QtQuick.Controls
import PiloTarn.Chat
import PiloTarn.Design

// A list of messages, oldest at the top, kept at its newest row while the
// reader is there. The room's timeline pages older messages in when it is
// scrolled to the top; a thread shows its replies the same way.
ListView {
    id: timeline

    required property NativeChatView chat
    property bool inThread: false
    // Follows new rows only while the newest one is in sight.
    property bool following: true

    objectName: inThread ? "chatThreadTimeline" : "chatTimeline"
    model: inThread ? chat.thread : chat.timeline
    clip: true
    spacing: 0
    boundsBehavior: Flickable.StopAtBounds
    // Rows scrolled out are used again for the rows scrolled in.
    reuseItems: true
    ScrollBar.vertical: ScrollBar {}

    header: Item { implicitHeight: Theme.spacing.xl }
    footer: Item { implicitHeight: Theme.spacing.s }

    // A delegate sees only its own roles and the list it is in.
    delegate: ChatMessageRow {
        readonly property ChatTimeline list: ListView.view as ChatTimeline

        width: ListView.view.width
        inThread: list !== null && list.inThread
        mine: list !== null && userId === list.chat.me
        editing: list !== null && messageId === list.chat.editingId
        editText: editing ? list.chat.editText : ""
        onEditRequested: id => list.chat.beginEdit(id)
        onEditTextEdited: text => list.chat.editText = text
        onEditSaved: list.chat.saveEdit()
        onEditCancelled: list.chat.cancelEdit()
        onReactionsRequested: (id, anchor) => list.chooseReaction(id, anchor)
        onThreadRequested: id => list.chat.openThread(id)
        onReactionToggled: (id, emoji) => list.chat.toggleReaction(id, emoji)
        onSavedToggled: id => list.chat.toggleSaved(id)
        onDeleteRequested: id => list.confirmDelete(id)
        onAttachmentOpened: (id, fileId) => list.chat.openAttachment(id, fileId)
        imageFiles: list !== null ? list.chat.imageFiles : ({})
        onImageWanted: (id, fileId) => list.chat.fetchImage(id, fileId)
    }

    function chooseReaction(id, anchor) {
        reactions.messageId = id
        const at = anchor.mapToItem(timeline, 0, anchor.height)
        reactions.x = Math.max(0, Math.min(at.x - reactions.implicitWidth + anchor.width,
                                           timeline.width - reactions.implicitWidth))
        reactions.y = at.y
        reactions.open()
    }

    function confirmDelete(id) {
        deleteSheet.messageId = id
        deleteSheet.open()
    }

    // However the reader scrolls (flick, wheel, scroll bar), being near the
    // end is following.
    onContentYChanged: if (!toEnd.running) following = contentHeight - (contentY - originY) - height < Theme.spacing.xl
    onAtYBeginningChanged: if (atYBeginning && !inThread && chat.hasMore && count > 0) chat.loadOlder()
    onCountChanged: if (following) toEnd.restart()
    onHeightChanged: if (following) toEnd.restart()
    // Rows settle their heights after they are made (wrapped text, files).
    onContentHeightChanged: if (following && !moving) toEnd.restart()

    // Once the rows of this turn are laid out.
    Timer {
        id: toEnd
        interval: 0
        onTriggered: timeline.positionViewAtEnd()
    }

    BusyIndicator {
        visible: timeline.chat.loadingOlder && !timeline.inThread
        anchors.top: parent.top
        anchors.horizontalCenter: parent.horizontalCenter
    }

    // Older messages paged in at the top leave the reader where they were,
    // so the view does not jump and reaching the top again pages further.
    // The list sees the new rows after this signal, so it moves a turn later.
    Connections {
        target: timeline.model
        function onRowsInserted(parent, first, last) {
            if (first === 0 && timeline.count > 0 && timeline.atYBeginning) {
                keepPlace.row = last + 1
                keepPlace.restart()
            }
        }
    }
    Timer {
        id: keepPlace
        property int row
        interval: 0
        onTriggered: timeline.positionViewAtIndex(row, ListView.Beginning)
    }

    Connections {
        target: timeline.chat
        function onSelectedRoomChanged() {
            timeline.following = true
        }
        function onThreadChanged() {
            timeline.following = true
        }
    }

    // A few common emoji; those already on a message toggle from its row.
    Popup {
        id: reactions
        property string messageId
        objectName: "chatReactionPicker"
        padding: Theme.spacing.xs
        background: Rectangle {
            radius: Theme.radii.large
            color: Theme.colours.raised
            border.width: 1
            border.color: Theme.colours.separator
        }
        contentItem: Row {
            spacing: 2
            Repeater {
                model: timeline.chat.quickReactions
                onItemAdded: (index, item) => item.clicked.connect(() => {
                    timeline.chat.toggleReaction(reactions.messageId, timeline.chat.quickReactions[index])
                    reactions.close()
                })
                delegate: ToolButton {
                    required property string modelData
                    text: modelData
                    font.pixelSize: Theme.type.title3
                    Accessible.name: qsTr("React with %1").arg(modelData)
                }
            }
        }
    }

    ConfirmSheet {
        id: deleteSheet
        property string messageId
        title: qsTr("Delete this message?")
        text: qsTr("It is removed for everyone in the room.")
        confirmText: qsTr("Delete")
        destructive: true
        onConfirmed: timeline.chat.deleteMessage(messageId)
    }
}
