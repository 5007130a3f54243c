import QtQuick
import QtQuick.Layouts
import PiloTarn.Documents
import PiloTarn.Design

// The open envelope: its document, who sent it, the signers in order with
// their state (the one whose turn it is with their signing link), and Send
// while it is a draft or when that signer's link expired; a completed or
// declined one starts a new envelope for its document.
Rectangle {
    id: card

    required property NativeDocumentsView view
    readonly property var envelope: view.openEnvelope

    objectName: "envelopeCard"
    implicitHeight: column.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.medium
    color: Theme.colours.raised
    border.width: 1
    border.color: Theme.colours.border

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.xs

        RowLayout {
            Layout.fillWidth: true
            Icon {
                symbol: "signature"
                size: 18
                color: Theme.colours.accent
            }
            Text {
                text: card.envelope.title ?? ""
                font.pixelSize: Theme.type.body
                font.weight: Font.DemiBold
                color: Theme.colours.text
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            IconButton {
                symbol: "xmark"
                text: qsTr("Close the envelope (Escape)")
                onClicked: card.view.closeEnvelope()
            }
        }
        Text {
            objectName: "envelopeProgress"
            text: qsTr("%1 · from %2").arg(card.envelope.progress ?? "").arg(card.envelope.sender ?? "")
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }
        Text {
            visible: text.length > 0
            text: card.envelope.message ?? ""
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        SignerList {
            view: card.view
            Layout.fillWidth: true
        }
        Text {
            objectName: "envelopeNotice"
            visible: text.length > 0
            text: card.view.notice
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.accent
            Layout.fillWidth: true
        }
        ActionButton {
            objectName: "envelopeSend"
            visible: card.envelope.status === "draft" || card.envelope.linkExpired === true
            enabled: card.view.canSend
            kind: ActionButton.Primary
            text: card.envelope.status === "draft" ? qsTr("Send for signature") : qsTr("Send a new signing link")
            onClicked: card.view.send()
            Layout.alignment: Qt.AlignRight
        }
        ActionButton {
            objectName: "envelopeNew"
            visible: card.envelope.status === "completed" || card.envelope.status === "declined"
            text: qsTr("New envelope")
            onClicked: card.view.newEnvelope()
            Layout.alignment: Qt.AlignRight
        }
    }
}
