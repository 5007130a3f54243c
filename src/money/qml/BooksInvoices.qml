import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The Invoices page: customer invoices, open ones first with what is still
// owed on them, then those paid; below them the payments received on each.
ColumnLayout {
    id: page

    required property NativeBooksView view

    spacing: Theme.spacing.m

    Component.onCompleted: view.reload()

    ErrorBanner {
        visible: text.length > 0
        text: page.view.error
        retryable: true
        onRetry: page.view.reload()
        Layout.fillWidth: true
    }
    LoadingPlaceholder {
        visible: page.view.loading && list.count === 0
        rows: 5
        Layout.fillWidth: true
    }
    EmptyState {
        visible: !page.view.loading && list.count === 0 && page.view.error.length === 0
        symbol: "doc.text.magnifyingglass"
        title: qsTr("No invoices")
        text: qsTr("Customer invoices show here with what is still owed.")
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    InvoiceList {
        id: list

        objectName: "invoices"
        visible: count > 0
        books: page.view.transactions
        onVoidAsked: (invoiceId, title) => voidSheet.ask("invoice", invoiceId, title)
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredHeight: 360
    }

    SectionHeader {
        visible: receipts.count > 0
        text: qsTr("Payments received")
        Layout.fillWidth: true
    }
    DocumentList {
        id: receipts

        objectName: "receipts"
        visible: count > 0
        model: page.view.receipts
        onVoidAsked: (kind, recordId, title) => voidSheet.ask(kind, recordId, title)
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredHeight: 240
    }

    VoidSheet {
        id: voidSheet

        objectName: "voidSheet"
        view: page.view
    }

    DoneNotice {
        id: notice

        Layout.fillWidth: true
    }
    Connections {
        target: page.view
        function onDone(message: string) {
            notice.show(message)
        }
    }
}
