import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The Transactions page: ledger entries and the workspace's payments, newest
// first, searched by words and narrowed to where they came from.
ColumnLayout {
    id: page

    required property NativeBooksView view
    readonly property NativeBooksTransactions state: view.transactions

    spacing: Theme.spacing.m

    Component.onCompleted: view.reload()

    RowLayout {
        spacing: Theme.spacing.xs
        Layout.fillWidth: true

        SearchField {
            objectName: "transactionSearch"
            placeholderText: qsTr("Search transactions")
            text: page.state.query
            onTextEdited: page.state.query = text
            Layout.fillWidth: true
        }
        ActionButton {
            objectName: "source-all"
            text: qsTr("All")
            kind: page.state.source === "all" ? ActionButton.Primary : ActionButton.Plain
            onClicked: page.state.source = "all"
        }
        ActionButton {
            objectName: "source-books"
            text: qsTr("Books")
            kind: page.state.source === "books" ? ActionButton.Primary : ActionButton.Plain
            onClicked: page.state.source = "books"
        }
        ActionButton {
            objectName: "source-payments"
            text: qsTr("Payments")
            kind: page.state.source === "payments" ? ActionButton.Primary : ActionButton.Plain
            onClicked: page.state.source = "payments"
        }
        ActionButton {
            objectName: "source-mercury"
            text: qsTr("Bank feed")
            kind: page.state.source === "mercury" ? ActionButton.Primary : ActionButton.Plain
            onClicked: page.state.source = "mercury"
        }
    }

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
        symbol: "arrow.left.arrow.right"
        title: qsTr("No transactions")
        text: page.state.query.length > 0 || page.state.source !== "all"
              ? qsTr("Nothing matches this search.") : qsTr("Entries and payments show here as they are posted.")
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    ListView {
        id: list

        objectName: "transactions"
        visible: count > 0
        clip: true
        model: page.state.transactions
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}
        Layout.fillWidth: true
        Layout.fillHeight: true

        delegate: BooksLine {
            required title
            required property string date
            required property string detail
            required property string amount
            required property string status

            width: ListView.view.width
            subtitle: detail.length > 0 ? date + " · " + detail : date
            note: status
            figure: amount
        }
    }
}
