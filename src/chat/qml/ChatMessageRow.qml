import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// One timeline row: the day and "New messages" dividers that stand above
// it, then either a header (avatar, name, time) over the text or, inside a
// group, the text alone; a deleted message says so in place of its text.
// Attachments, reactions and the thread's reply count follow the text.
ColumnLayout {
    id: row

    required property string messageId
    required property string userId
    required property string author
    required property string body
    required property bool deleted
    required property int replyCount
    required property bool saved
    required property var attachments
    required property var reactions
    required property bool showsDay
    required property bool showsNew
    required property bool showsHeader
    required property string dayLabel
    required property string timeLabel
    // A thread's rows offer no thread of their own.
    property bool inThread: false
    // One's own messages can be edited and deleted; an edit happens in place.
    property bool mine: false
    property bool editing: false
    property string editText
    // Image attachments fetched so far: file id to local file.
    property var imageFiles: ({})

    signal threadRequested(string messageId)
    signal reactionToggled(string messageId, string emoji)
    signal savedToggled(string messageId)
    signal deleteRequested(string messageId)
    signal attachmentOpened(string messageId, string fileId)
    signal imageWanted(string messageId, string fileId)
    signal reactionsRequested(string messageId, Item anchor)
    signal editRequested(string messageId)
    signal editTextEdited(string text)
    signal editSaved()
    signal editCancelled()

    readonly property real avatarSize: 36
    spacing: 0

    function editKey(event) {
        if (event.modifiers & Qt.ShiftModifier)
            event.accepted = false
        else
            editSaved()
    }

    component Divider: RowLayout {
        id: divider
        property string label
        property color ink: Theme.colours.secondaryText
        spacing: Theme.spacing.s
        Layout.fillWidth: true
        Layout.topMargin: Theme.spacing.m
        Layout.bottomMargin: Theme.spacing.xs
        Rectangle { implicitHeight: 1; color: divider.ink; opacity: 0.4; Layout.fillWidth: true }
        Text {
            text: divider.label
            font.pixelSize: Theme.type.footnote
            font.weight: Font.DemiBold
            color: divider.ink
        }
        Rectangle { implicitHeight: 1; color: divider.ink; opacity: 0.4; Layout.fillWidth: true }
    }

    Divider {
        objectName: "chatDayDivider"
        visible: row.showsDay
        label: row.dayLabel
    }
    Divider {
        objectName: "chatNewDivider"
        visible: row.showsNew
        label: qsTr("New messages")
        ink: Theme.colours.danger
    }

    Rectangle {
        color: hover.hovered ? Theme.colours.hover : "transparent"
        radius: Theme.radii.small
        implicitHeight: content.implicitHeight + 2 * Theme.spacing.xxs
        Layout.fillWidth: true
        Layout.topMargin: row.showsHeader ? Theme.spacing.s : 0

        HoverHandler { id: hover }

        RowLayout {
            id: content
            anchors.fill: parent
            anchors.topMargin: Theme.spacing.xxs
            anchors.bottomMargin: Theme.spacing.xxs
            anchors.leftMargin: Theme.spacing.xs
            anchors.rightMargin: Theme.spacing.xs
            spacing: Theme.spacing.s

            Item {
                implicitWidth: row.avatarSize
                implicitHeight: row.showsHeader ? row.avatarSize : 1
                Layout.alignment: Qt.AlignTop
                Avatar {
                    visible: row.showsHeader
                    name: row.author
                    key: row.userId
                    size: row.avatarSize
                }
            }

            ColumnLayout {
                spacing: Theme.spacing.xxs
                Layout.fillWidth: true

                RowLayout {
                    visible: row.showsHeader
                    spacing: Theme.spacing.s
                    Text {
                        objectName: "chatAuthor"
                        text: row.author
                        font.pixelSize: Theme.type.callout
                        font.weight: Font.DemiBold
                        color: Theme.colours.text
                    }
                    Text {
                        text: row.timeLabel
                        font.pixelSize: Theme.type.footnote
                        color: Theme.colours.tertiaryText
                    }
                }

                Text {
                    objectName: "chatBody"
                    visible: text.length > 0 && !row.editing
                    text: row.deleted ? qsTr("This message was deleted.") : row.body
                    font.pixelSize: Theme.type.body
                    font.italic: row.deleted
                    color: row.deleted ? Theme.colours.tertiaryText : Theme.colours.text
                    wrapMode: Text.Wrap
                    textFormat: Text.PlainText
                    Layout.fillWidth: true
                }

                // Enter saves, Shift+Enter breaks the line, Escape leaves it as it was.
                TextArea {
                    id: editor
                    objectName: "chatEditor"
                    visible: row.editing
                    text: row.editText
                    color: Theme.colours.text
                    font.pixelSize: Theme.type.body
                    wrapMode: TextEdit.Wrap
                    padding: Theme.spacing.s
                    Accessible.name: qsTr("Edit message")
                    Layout.fillWidth: true
                    background: Rectangle {
                        radius: Theme.radii.medium
                        color: Theme.colours.surface
                        border.color: Theme.colours.accent
                    }
                    onTextChanged: if (row.editing && text !== row.editText) row.editTextEdited(text)
                    onVisibleChanged: if (visible) {
                        forceActiveFocus()
                        cursorPosition = length
                    }
                    Keys.onReturnPressed: event => row.editKey(event)
                    Keys.onEnterPressed: event => row.editKey(event)
                    Keys.onEscapePressed: row.editCancelled()
                }
                Text {
                    visible: row.editing
                    text: qsTr("Enter saves · Escape cancels")
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.tertiaryText
                }

                // Its delegates see only their own data: the row hears their clicks.
                Repeater {
                    model: row.deleted ? [] : row.attachments
                    onItemAdded: (index, item) => {
                        const file = item as ChatAttachment
                        const id = row.attachments[index].id
                        file.clicked.connect(() => row.attachmentOpened(row.messageId, id))
                        file.image = Qt.binding(() => row.imageFiles[id] || "")
                        if (row.attachments[index].isImage)
                            row.imageWanted(row.messageId, id)
                    }
                    delegate: ChatAttachment {}
                }

                Flow {
                    visible: !row.deleted && (row.reactions.length > 0 || row.replyCount > 0)
                    spacing: Theme.spacing.xs
                    Layout.fillWidth: true
                    Repeater {
                        model: row.reactions
                        onItemAdded: (index, item) => item.clicked.connect(
                                         () => row.reactionToggled(row.messageId, row.reactions[index].emoji))
                        delegate: ActionButton {
                            required property var modelData
                            kind: modelData.mine ? ActionButton.Primary : ActionButton.Secondary
                            text: modelData.emoji + " " + modelData.count
                        }
                    }
                    ActionButton {
                        objectName: "replyCount"
                        visible: row.replyCount > 0 && !row.inThread
                        kind: ActionButton.Plain
                        symbol: "arrow.uturn.backward"
                        text: row.replyCount === 1 ? qsTr("1 reply") : qsTr("%1 replies").arg(row.replyCount)
                        onClicked: row.threadRequested(row.messageId)
                    }
                }
            }

            // What can be done with a message, shown while the pointer is over it.
            RowLayout {
                visible: hover.hovered && !row.deleted && !row.editing
                spacing: 0
                Layout.alignment: Qt.AlignTop
                IconButton {
                    id: react
                    objectName: "reactToMessage"
                    symbol: "face.smiling"
                    iconSize: 16
                    text: qsTr("Add a reaction")
                    onClicked: row.reactionsRequested(row.messageId, react)
                }
                IconButton {
                    visible: !row.inThread
                    symbol: "arrow.uturn.backward"
                    iconSize: 16
                    text: qsTr("Reply in thread")
                    onClicked: row.threadRequested(row.messageId)
                }
                IconButton {
                    symbol: "bookmark"
                    iconSize: 16
                    lit: row.saved
                    text: row.saved ? qsTr("Remove from saved") : qsTr("Save")
                    onClicked: row.savedToggled(row.messageId)
                }
                IconButton {
                    objectName: "editMessage"
                    visible: row.mine
                    symbol: "pencil"
                    iconSize: 16
                    text: qsTr("Edit")
                    onClicked: row.editRequested(row.messageId)
                }
                IconButton {
                    objectName: "deleteMessage"
                    visible: row.mine
                    symbol: "trash"
                    iconSize: 16
                    text: qsTr("Delete message")
                    onClicked: row.deleteRequested(row.messageId)
                }
            }
        }
    }
}
