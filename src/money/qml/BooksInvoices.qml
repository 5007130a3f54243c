import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The Invoices page: customer invoices, open ones first with what is still
// owed on them, then those paid.
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
        onVoidAsked: (invoiceId, title) => voidSheet.ask(invoiceId, title)
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    ConfirmSheet {
        id: voidSheet

        objectName: "voidSheet"

        property string invoiceId
        property bool refused: false

        function ask(id: string, title: string) {
            invoiceId = id
            refused = false
            voidSheet.title = qsTr("Void %1").arg(title)
            voidDate.text = page.view.periodEnd
            open()
        }

        text: qsTr("The invoice's entry is reversed on this day and nothing more is owed on it.")
        confirmText: qsTr("Void invoice")
        destructive: true
        onConfirmed: {
            refused = !page.view.voidRecord("invoice", invoiceId, voidDate.text)
            if (refused)
                open()
        }

        FormField {
            id: voidDate

            objectName: "voidDate"
            label: qsTr("Day (YYYY-MM-DD)")
            error: voidSheet.refused ? page.view.formError : ""
            input.onTextEdited: voidSheet.refused = false
            Layout.fillWidth: true
        }
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
