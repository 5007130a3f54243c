import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Documents
import PiloTarn.Design

// The documents screen's "Worksheets", "Agreements", "Proposals" and
// "Envelopes" sections: the section's documents with a search, and beside
// them the open document's envelope with its signers, or a new envelope
// being written. It loads when it is made and stops refreshing when it goes
// away.
Pane {
    id: screen

    required property NativeDocumentsView view
    property string section: "Worksheets"

    padding: 0
    background: null

    onSectionChanged: if (view)
                          view.section = section
    Component.onCompleted: {
        view.section = section
        view.appear()
    }
    Component.onDestruction: view.disappear()

    Shortcut {
        sequences: ["/", "Ctrl+F"]
        onActivated: search.forceActiveFocus()
    }
    Shortcut {
        sequence: "Escape"
        enabled: screen.view.openEnvelopeId.length > 0 || screen.view.draftDocumentId.length > 0
        onActivated: screen.view.closeEnvelope()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ErrorBanner {
            objectName: "documentsError"
            text: screen.view.errorText
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.s
        }

        RowLayout {
            spacing: Theme.spacing.l
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.l

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Layout.fillHeight: true

                SearchField {
                    id: search
                    objectName: "documentsSearch"
                    placeholderText: qsTr("Search %1").arg(screen.section.toLowerCase())
                    text: screen.view.search
                    onTextChanged: screen.view.search = text
                    Layout.fillWidth: true
                }
                // The list, its loading rows and its empty state share one place.
                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true

                    DocumentList {
                        id: list
                        anchors.fill: parent
                        view: screen.view
                    }
                    LoadingPlaceholder {
                        visible: screen.view.loading
                        anchors.left: parent.left
                        anchors.right: parent.right
                    }
                    EmptyState {
                        objectName: "documentsEmpty"
                        anchors.fill: parent
                        visible: screen.view.loaded && list.count === 0
                        symbol: "doc.text"
                        title: qsTr("Nothing to show")
                        text: screen.view.emptyText
                    }
                }
            }

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.preferredWidth: 360
                Layout.maximumWidth: 360
                Layout.fillHeight: true

                EnvelopeCard {
                    visible: screen.view.openEnvelopeId.length > 0
                    view: screen.view
                    Layout.fillWidth: true
                }
                EnvelopeComposer {
                    visible: screen.view.draftDocumentId.length > 0
                    view: screen.view
                    Layout.fillWidth: true
                }
                Text {
                    visible: screen.view.openEnvelopeId.length === 0 && screen.view.draftDocumentId.length === 0
                    text: qsTr("Choose an agreement or proposal to send it for signature, or an envelope to see who has signed.")
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.secondaryText
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
                Item {
                    Layout.fillHeight: true
                }
            }
        }
    }

    PdfPreviewSheet {
        preview: screen.view.preview
    }
}
