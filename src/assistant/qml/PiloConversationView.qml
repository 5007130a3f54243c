import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Assistant
import PiloTarn.Design

// The conversation with Pilo: the greeting and starter prompts while it is
// empty, each request with its status and reply, and the composer. Used by
// the side panel and the agent screen alike.
ColumnLayout {
    id: view

    required property TarnPiloConversation conversation
    // The page the person is on (sent with each request), and the draft the
    // composer starts from.
    property string page
    property string draft
    property string personName

    signal draftEdited(string text)
    signal showHistoryRequested()

    spacing: Theme.spacing.s

    ErrorBanner {
        visible: view.conversation.error.length > 0 && !view.conversation.uncertainSend
        text: view.conversation.error
        retryable: true
        onRetry: view.conversation.reload()
        Layout.fillWidth: true
    }

    Text {
        objectName: "piloNotConnected"
        visible: view.conversation.loaded && view.conversation.configured && !view.conversation.online
        text: qsTr("Pilo isn't connected to Tarn yet. You can read past replies here; sending opens once it's connected.")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.secondaryText
        Layout.fillWidth: true
    }

    Text {
        visible: view.conversation.uncertainSend
        text: qsTr("Checking whether your last request reached Pilo…")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.secondaryText
        Layout.fillWidth: true
    }

    LoadingPlaceholder {
        visible: !view.conversation.loaded
        Layout.fillWidth: true
    }

    EmptyState {
        visible: view.conversation.loaded && !view.conversation.configured
        symbol: "sparkles"
        title: qsTr("Pilo isn't set up")
        text: qsTr("An admin sets Pilo up for this workspace; until then there is nothing to ask it.")
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    ColumnLayout {
        objectName: "piloWelcome"
        visible: view.conversation.loaded && view.conversation.configured && requests.count === 0
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        Text {
            text: view.conversation.greeting(view.personName)
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Layout.fillWidth: true
        }
        Repeater {
            model: view.conversation.suggestions
            onItemAdded: (index, item) => {
                item.enabled = Qt.binding(() => view.conversation.canSend)
                item.clicked.connect(() => view.draftEdited(view.conversation.suggestions[index].prompt))
            }

            ListRow {
                required property var modelData
                symbol: modelData.symbol
                text: modelData.label
                Layout.fillWidth: true
            }
        }
    }

    ActionButton {
        visible: view.conversation.foldedCount > 0 && !view.conversation.showHistory
        kind: ActionButton.Plain
        symbol: "clock.arrow.circlepath"
        text: qsTr("Show %n earlier request(s)", "", view.conversation.foldedCount)
        onClicked: view.showHistoryRequested()
    }

    // A delegate sees only its own roles: it signals, and the repeater that
    // made it connects the signal.
    component RequestItem: ColumnLayout {
        id: request

        required property string requestId
        required property string content
        required property string title
        required property string statusLabel
        required property string reply

        property bool renaming: false

        signal removeRequested()
        signal renameRequested(string title)

        spacing: Theme.spacing.xs
        Layout.fillWidth: true

        TextField {
            visible: request.renaming
            text: request.title.length > 0 ? request.title : request.content
            font.pixelSize: Theme.type.callout
            Accessible.name: qsTr("Name of this request")
            Layout.fillWidth: true
            onVisibleChanged: if (visible) { forceActiveFocus(); selectAll() }
            onAccepted: {
                request.renaming = false
                if (text.trim().length > 0)
                    request.renameRequested(text.trim())
            }
            Keys.onEscapePressed: request.renaming = false
        }
        Text {
            visible: request.title.length > 0 && !request.renaming
            text: request.title
            font.pixelSize: Theme.type.caption
            font.weight: Font.DemiBold
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }
        Rectangle {
            radius: Theme.radii.large
            color: Theme.colours.accentSoft
            implicitHeight: asked.implicitHeight + 2 * Theme.spacing.s
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Text {
                id: asked
                anchors.fill: parent
                anchors.margins: Theme.spacing.s
                text: request.content
                wrapMode: Text.Wrap
                font.pixelSize: Theme.type.callout
                color: Theme.colours.text
            }
        }
        RowLayout {
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            Icon {
                symbol: request.statusLabel === qsTr("Done") ? "checkmark" : "sparkles"
                size: 16
                color: Theme.colours.accent
            }
            Text {
                objectName: "piloStatus"
                text: request.statusLabel
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.fillWidth: true
            }
            IconButton {
                symbol: "square.and.pencil"
                iconSize: 16
                text: qsTr("Rename this request")
                onClicked: request.renaming = true
            }
            IconButton {
                symbol: "xmark"
                iconSize: 16
                text: qsTr("Remove this request")
                onClicked: request.removeRequested()
            }
        }
        // Replies are plain text with paragraphs and "- " lists, which the
        // Markdown reader lays out; links open in the browser.
        Text {
            visible: request.reply.length > 0
            text: request.reply
            textFormat: Text.MarkdownText
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            linkColor: Theme.colours.accent
            Layout.fillWidth: true
            onLinkActivated: link => Qt.openUrlExternally(link)
        }
    }

    Flickable {
        id: scroller

        objectName: "piloRequests"
        visible: view.conversation.configured
        contentHeight: column.implicitHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        Layout.fillWidth: true
        Layout.fillHeight: true
        ScrollBar.vertical: ScrollBar {}

        ColumnLayout {
            id: column
            width: scroller.width
            spacing: Theme.spacing.m

            Repeater {
                id: requests
                model: view.conversation.requests
                onItemAdded: (index, item) => {
                    item.removeRequested.connect(() => view.conversation.remove(item.requestId))
                    item.renameRequested.connect(title => view.conversation.rename(item.requestId, title))
                    // The newest request is at the end: keep it in sight.
                    Qt.callLater(() => scroller.contentY = Math.max(0, scroller.contentHeight - scroller.height))
                }

                RequestItem {}
            }
        }
    }

    TextArea {
        id: composer

        objectName: "piloComposer"
        enabled: view.conversation.canSend
        text: view.draft
        placeholderText: view.conversation.canSend ? qsTr("Ask Pilo to do something…") : ""
        placeholderTextColor: Theme.colours.tertiaryText
        color: Theme.colours.text
        font.pixelSize: Theme.type.body
        wrapMode: TextEdit.Wrap
        padding: Theme.spacing.m
        Accessible.name: qsTr("Ask Pilo")
        Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        Keys.onReturnPressed: event => {
            if (event.modifiers & Qt.ShiftModifier)
                event.accepted = false
            else
                send.clicked()
        }
        Layout.fillWidth: true
        Layout.minimumHeight: 64
        background: Rectangle {
            radius: Theme.radii.large
            color: Theme.colours.surface
            border.color: composer.activeFocus ? Theme.colours.accent : Theme.colours.border
            FocusRing { shown: composer.activeFocus }
        }
        onTextChanged: if (text !== view.draft) view.draftEdited(text)
    }

    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        Switch {
            id: process
            text: qsTr("Work step by step")
            enabled: view.conversation.canSend
            font.pixelSize: Theme.type.footnote
        }
        Item { Layout.fillWidth: true }
        ActionButton {
            id: send
            objectName: "piloSend"
            kind: ActionButton.Primary
            symbol: "paperplane"
            text: view.conversation.sending ? qsTr("Sending…") : qsTr("Send")
            enabled: view.conversation.canSend && composer.text.trim().length > 0
            onClicked: if (enabled) view.conversation.ask(composer.text, view.page, process.checked)
        }
    }

    Connections {
        target: view.conversation
        function onSent() {
            composer.clear()
            view.draftEdited("")
        }
    }
}
