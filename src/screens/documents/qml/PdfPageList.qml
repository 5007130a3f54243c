import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Documents

// The previewed PDF's pages, one under another, each at the list's width.
ListView {
    required property NativePdfPreview preview

    model: preview.pageCount
    clip: true
    spacing: Theme.spacing.m
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: NativePdfPage {
        required property int index
        readonly property PdfPageList list: ListView.view as PdfPageList

        objectName: "pdfPage"
        width: ListView.view.width
        // US Letter's proportions, the pages the service draws.
        height: width * 11 / 8.5
        preview: list ? list.preview : null
        page: index
    }
}
