import QtQuick
import QtQuick.Controls
import PiloTarn.Documents
import PiloTarn.Design

// A section's documents, newest first: title, customer, owner, state and
// when it last changed. Choosing one opens its envelope or a new one.
ListView {
    required property NativeDocumentsView view

    objectName: "documentList"
    model: view.documents
    clip: true
    spacing: 2
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        id: row

        objectName: "documentRow"

        required property string documentId
        required property string title
        required property string kind
        required property string client
        required property string owner
        required property string status
        required property string updated
        required property int pages
        required property string envelopeId
        readonly property DocumentList list: ListView.view as DocumentList

        width: ListView.view.width
        rightPadding: Theme.spacing.s + previewButton.width
        text: title
        symbol: ({ worksheet: "doc.plaintext", proposal: "doc.richtext" })[kind] ?? "doc.text"
        subtitle: (client.length > 0 ? client + " · " : "") + (pages === 1 ? qsTr("%1 · 1 page").arg(owner) : qsTr("%1 · %2 pages").arg(owner).arg(pages))
        detail: status + " · " + updated
        lit: list !== null && (list.view.draftDocumentId === documentId
                               || (envelopeId.length > 0 && list.view.openEnvelopeId === envelopeId))
        onClicked: list.view.openDocument(documentId)
        Keys.onReturnPressed: list.view.openDocument(documentId)
        Keys.onSpacePressed: list.view.preview.show(documentId, title)

        IconButton {
            id: previewButton
            objectName: "documentPreview"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "doc.text.magnifyingglass"
            text: qsTr("Preview %1 (Space)").arg(row.title)
            onClicked: row.list.view.preview.show(row.documentId, row.title)
        }
    }
}
