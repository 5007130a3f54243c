import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// One message: who wrote to whom, then its blocks, one delegate per kind;
// "Formatting message…" while it is parsed, the long-message notice, its
// quoted history behind "Show quoted text", and its attachments.
ColumnLayout {
    id: message

    readonly property NativeMailView mail: ListView.view ? (ListView.view as MailMessageList).mail : null
    required property string messageId
    required property string fromName
    required property string recipients
    required property var attachments
    required property bool parsing
    required property bool truncated
    required property bool hasQuoted
    required property bool quotedShown
    required property int blockedTrackers

    property int failedImages: 0

    function save(id, name) {
        saveDialog.save(id, name)
    }

    spacing: Theme.spacing.s

    Connections {
        target: message.mail.images
        function onFailuresChanged(id) {
            if (id === message.messageId)
                message.failedImages = message.mail.images.failures(id)
        }
    }

    Label {
        text: message.fromName
        font.weight: Font.DemiBold
        color: Theme.colours.text
    }
    Label {
        text: message.recipients
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.secondaryText
        elide: Text.ElideRight
        Layout.fillWidth: true
    }

    Label {
        visible: message.parsing
        text: qsTr("Formatting message…")
        color: Theme.colours.secondaryText
    }

    MailBlocks {
        visible: !message.parsing
        mail: message.mail
        messageId: message.messageId
        quoted: false
        Layout.fillWidth: true
    }

    RowLayout {
        visible: message.truncated
        spacing: Theme.spacing.s
        Label {
            text: qsTr("This message is very long. Showing the first part.")
            color: Theme.colours.secondaryText
        }
        ActionButton {
            text: qsTr("Show entire message")
            onClicked: message.mail.showEntireMessage(message.messageId)
        }
    }

    Label {
        visible: message.blockedTrackers > 0
        text: message.blockedTrackers === 1 ? qsTr("1 tracker blocked.")
                                             : qsTr("%1 trackers blocked.").arg(message.blockedTrackers)
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.tertiaryText
    }

    Label {
        visible: message.failedImages > 0
        text: message.mail.imageFailureText(message.failedImages)
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.tertiaryText
    }

    ActionButton {
        visible: message.hasQuoted
        text: message.quotedShown ? qsTr("Hide quoted text") : qsTr("Show quoted text")
        onClicked: message.mail.toggleQuoted(message.messageId)
    }

    MailBlocks {
        visible: message.quotedShown
        mail: message.mail
        messageId: message.messageId
        quoted: true
        Layout.fillWidth: true
    }

    Repeater {
        model: message.attachments
        delegate: ActionButton {
            required property var modelData
            symbol: "doc.text"
            text: modelData.name + " · " + Math.max(1, Math.round(modelData.size / 1024)) + " KB"
            onClicked: (parent as MailMessage).save(modelData.id, modelData.name)
        }
    }

    MailSaveDialog {
        id: saveDialog
        mail: message.mail
        messageId: message.messageId
    }
}
