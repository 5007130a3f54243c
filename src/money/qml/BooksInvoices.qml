import QtQuick
import QtQuick.Controls
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

    ListView {
        id: list

        objectName: "invoices"
        visible: count > 0
        clip: true
        model: page.view.transactions.invoices
        boundsBehavior: Flickable.StopAtBounds
        section.property: "open"
        section.delegate: SectionHeader {
            required property string section
            width: ListView.view.width
            text: section === "true" ? qsTr("Open") : qsTr("Paid and closed")
        }
        ScrollBar.vertical: ScrollBar {}
        Layout.fillWidth: true
        Layout.fillHeight: true

        delegate: BooksLine {
            required title
            required property string customer
            required property string date
            required property string amount
            required property string remaining
            required property bool open
            required property string status

            width: ListView.view.width
            subtitle: customer + " · " + date
            note: open ? qsTr("%1 remaining").arg(remaining) : status
            noteColour: open ? Theme.colours.warning : Theme.colours.secondaryText
            figure: amount
        }
    }
}
