import QtQuick
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

                // Made only while editing, as the actions below only while hovered:
                // a long timeline scrolls without making them for every row.
                Loader {
                    active: row.editing
                    visible: active
                    Layout.fillWidth: true
                    sourceComponent: ChatMessageEditor {}
                    onLoaded: {
                        const editor = item as ChatMessageEditor
                        editor.text = row.editText
                        editor.cursorPosition = editor.length
                        editor.forceActiveFocus()
                        editor.textChanged.connect(() => {
                            if (row.editing && editor.text !== row.editText)
                                row.editTextEdited(editor.text)
                        })
                        editor.saved.connect(row.editSaved)
                        editor.cancelled.connect(row.editCancelled)
                    }
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

            Loader {
                active: hover.hovered && !row.deleted && !row.editing
                visible: active
                Layout.alignment: Qt.AlignTop
                sourceComponent: ChatMessageActions {}
                onLoaded: {
                    const bar = item as ChatMessageActions
                    bar.inThread = Qt.binding(() => row.inThread)
                    bar.saved = Qt.binding(() => row.saved)
                    bar.mine = Qt.binding(() => row.mine)
                    bar.reactRequested.connect(anchor => row.reactionsRequested(row.messageId, anchor))
                    bar.threadRequested.connect(() => row.threadRequested(row.messageId))
                    bar.savedToggled.connect(() => row.savedToggled(row.messageId))
                    bar.editRequested.connect(() => row.editRequested(row.messageId))
                    bar.deleteRequested.connect(() => row.deleteRequested(row.messageId))
                }
            }
        }
    }
}
