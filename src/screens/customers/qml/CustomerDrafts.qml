import QtQuick
import QtQuick.Layouts
import PiloTarn.Customers
import PiloTarn.Design

// Messages drafted to the customer (by Pilo or a teammate): each is sent as
// it stands or discarded.
ListView {
    required property NativeCustomerProfile profile

    model: profile.drafts
    interactive: false
    implicitHeight: contentHeight
    spacing: Theme.spacing.xs

    delegate: Rectangle {
        id: draft

        required property string draftId
        required property string channel
        required property string subject
        required property string body
        readonly property CustomerDrafts owner: ListView.view as CustomerDrafts

        width: ListView.view.width
        implicitHeight: content.implicitHeight + 2 * Theme.spacing.s
        radius: Theme.radii.medium
        color: Theme.colours.accentSoft

        ColumnLayout {
            id: content
            anchors.fill: parent
            anchors.margins: Theme.spacing.s
            spacing: Theme.spacing.xs

            Text {
                text: draft.channel === "email" ? qsTr("Email: %1").arg(draft.subject) : qsTr("Text message")
                elide: Text.ElideRight
                font.pixelSize: Theme.type.footnote
                font.weight: Font.DemiBold
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            Text {
                text: draft.body
                wrapMode: Text.Wrap
                maximumLineCount: 5
                elide: Text.ElideRight
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: Theme.spacing.xs
                ActionButton {
                    kind: ActionButton.Primary
                    symbol: "paperplane"
                    text: qsTr("Send")
                    onClicked: if (draft.owner) draft.owner.profile.sendDraft(draft.draftId)
                }
                ActionButton {
                    kind: ActionButton.Plain
                    text: qsTr("Discard")
                    onClicked: if (draft.owner) draft.owner.profile.discardDraft(draft.draftId)
                }
            }
        }
    }
}
