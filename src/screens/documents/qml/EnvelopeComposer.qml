import QtQuick
import QtQuick.Layouts
import PiloTarn.Documents
import PiloTarn.Design

// A new envelope: the signers in the order they sign (moved earlier or
// later, or removed), a message, and Create, which makes the envelope ready
// to send.
Rectangle {
    id: composer

    required property NativeDocumentsView view

    objectName: "envelopeComposer"
    implicitHeight: column.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.medium
    color: Theme.colours.raised
    border.width: 1
    border.color: Theme.colours.border

    function add() {
        view.addRecipient(name.text, email.text)
        name.text = ""
        email.text = ""
        name.input.forceActiveFocus()
    }

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.s

        SectionHeader {
            text: qsTr("New envelope")
            Layout.fillWidth: true
            IconButton {
                symbol: "xmark"
                text: qsTr("Discard (Escape)")
                onClicked: composer.view.closeEnvelope()
            }
        }
        Repeater {
            model: composer.view.draftRecipients
            onItemAdded: (index, item) => {
                item.earlierAsked.connect(() => composer.view.moveRecipient(index, -1))
                item.removeAsked.connect(() => composer.view.removeRecipient(index))
            }

            RowLayout {
                id: recipient
                required property var modelData
                required property int index
                signal earlierAsked()
                signal removeAsked()
                Layout.fillWidth: true
                Text {
                    text: qsTr("%1. %2 <%3>").arg(recipient.index + 1).arg(recipient.modelData.name)
                              .arg(recipient.modelData.email)
                    textFormat: Text.PlainText
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.text
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                ActionButton {
                    kind: ActionButton.Plain
                    text: qsTr("Earlier")
                    enabled: recipient.index > 0
                    onClicked: recipient.earlierAsked()
                }
                IconButton {
                    symbol: "trash"
                    text: qsTr("Remove %1").arg(recipient.modelData.name)
                    onClicked: recipient.removeAsked()
                }
            }
        }
        FormField {
            id: name
            objectName: "recipientName"
            label: qsTr("Signer")
            placeholderText: qsTr("Name")
            Layout.fillWidth: true
        }
        FormField {
            id: email
            objectName: "recipientEmail"
            placeholderText: qsTr("Email address")
            Layout.fillWidth: true
            onAccepted: composer.add()
        }
        ActionButton {
            objectName: "recipientAdd"
            text: qsTr("Add signer")
            enabled: name.text.trim().length > 0 && email.text.trim().length > 0
            onClicked: composer.add()
        }
        FormField {
            label: qsTr("Message")
            placeholderText: qsTr("A note for the signers")
            text: composer.view.draftMessage
            onTextChanged: composer.view.draftMessage = text
            Layout.fillWidth: true
        }
        Text {
            visible: text.length > 0
            text: composer.view.draftProblem
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        ActionButton {
            objectName: "envelopeCreate"
            kind: ActionButton.Primary
            text: qsTr("Create envelope")
            enabled: composer.view.draftProblem.length === 0 && !composer.view.busy
            onClicked: composer.view.createEnvelope()
            Layout.alignment: Qt.AlignRight
        }
    }
}
