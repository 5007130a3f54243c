import QtQuick
import PiloTarn.Documents
import PiloTarn.Design

// The open envelope's signers in signing order: each one's state, a
// decline's reason, and for the signer whose turn it is their signing link,
// copied or opened in the browser.
Column {
    id: list

    required property NativeDocumentsView view

    spacing: Theme.spacing.xs

    Repeater {
        model: list.view.signers

        Column {
            id: signer

            required property int order
            required property string name
            required property string email
            required property string status
            required property string statusLabel
            required property string answered
            required property string reason
            required property string signUrl
            readonly property SignerList owner: parent as SignerList

            objectName: "signerRow"
            width: owner?.width ?? 0
            spacing: Theme.spacing.xs

            ListRow {
                width: signer.width
                text: qsTr("%1. %2").arg(signer.order).arg(signer.name)
                subtitle: signer.email
                detail: signer.statusLabel
                symbol: ({ signed: "checkmark", sent: "clock", declined: "xmark", expired: "exclamationmark.triangle" })[signer.status] ?? "person.crop.circle"
                lit: signer.status === "sent"
            }
            Text {
                objectName: "signerAnswered"
                visible: text.length > 0
                width: signer.width
                leftPadding: Theme.spacing.xxl + Theme.spacing.xs
                text: signer.answered
                font.pixelSize: Theme.type.footnote
                color: signer.status === "declined" ? Theme.colours.danger
                     : signer.status === "expired" ? Theme.colours.warning : Theme.colours.secondaryText
                wrapMode: Text.Wrap
            }
            Text {
                visible: signer.reason.length > 0
                width: signer.width
                leftPadding: Theme.spacing.xxl + Theme.spacing.xs
                text: qsTr("\u201c%1\u201d").arg(signer.reason)
                font.pixelSize: Theme.type.footnote
                font.italic: true
                color: Theme.colours.secondaryText
                wrapMode: Text.Wrap
            }
            Flow {
                visible: signer.signUrl.length > 0
                width: signer.width
                leftPadding: Theme.spacing.xxl
                spacing: Theme.spacing.s

                ActionButton {
                    objectName: "signerCopyLink"
                    kind: ActionButton.Plain
                    leftPadding: Theme.spacing.xs
                    rightPadding: Theme.spacing.xs
                    symbol: "doc.on.doc"
                    text: qsTr("Copy signing link")
                    onClicked: signer.owner.view.copySigningLink()
                }
                ActionButton {
                    objectName: "signerOpenPage"
                    kind: ActionButton.Plain
                    leftPadding: Theme.spacing.xs
                    rightPadding: Theme.spacing.xs
                    symbol: "globe"
                    text: qsTr("Open signing page")
                    onClicked: signer.owner.view.openSigningPage()
                }
            }
        }
    }
}
