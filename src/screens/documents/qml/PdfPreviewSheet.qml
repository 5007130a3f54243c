import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Documents

// A document's pages over the screen, read from its PDF in the app and
// scrolled top to bottom. Escape or the close button puts it away.
Popup {
    id: sheet

    required property NativePdfPreview preview

    objectName: "pdfPreview"
    modal: true
    focus: true
    visible: preview.open
    anchors.centerIn: Overlay.overlay
    width: Math.min(720, (parent ? parent.width : 760) - 2 * Theme.spacing.xl)
    height: (parent ? parent.height : 800) - 2 * Theme.spacing.xl
    padding: Theme.spacing.l
    closePolicy: Popup.CloseOnEscape
    onClosed: preview.close()

    Overlay.modal: Rectangle { color: Theme.colours.scrim }

    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.width: 1
        border.color: Theme.colours.separator
    }

    Item {
        anchors.fill: parent

        Text {
            id: heading
            width: parent.width - close.width
            text: sheet.preview.pageCount === 1 ? qsTr("%1 · 1 page").arg(sheet.preview.title)
                  : sheet.preview.pageCount > 1 ? qsTr("%1 · %2 pages").arg(sheet.preview.title).arg(sheet.preview.pageCount)
                  : sheet.preview.title
            elide: Text.ElideRight
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
        }
        IconButton {
            id: close
            anchors.right: parent.right
            symbol: "xmark"
            text: qsTr("Close the preview (Escape)")
            onClicked: sheet.preview.close()
        }

        PdfPageList {
            anchors.top: heading.bottom
            anchors.topMargin: Theme.spacing.m
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            preview: sheet.preview
        }

        LoadingPlaceholder {
            visible: sheet.preview.loading
            anchors.top: heading.bottom
            anchors.topMargin: Theme.spacing.m
            width: parent.width
            rows: 6
        }
        ErrorBanner {
            anchors.top: heading.bottom
            anchors.topMargin: Theme.spacing.m
            width: parent.width
            text: sheet.preview.errorText
        }
    }
}
