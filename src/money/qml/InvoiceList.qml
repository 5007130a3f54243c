import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Money

// Customer invoices, open first with what remains on them, then those paid
// and closed; a books invoice can be voided.
ListView {
    id: list

    required property NativeBooksTransactions books

    signal voidAsked(string invoiceId, string title)

    clip: true
    model: books.invoices
    boundsBehavior: Flickable.StopAtBounds
    section.property: "open"
    section.delegate: SectionHeader {
        required property string section
        width: ListView.view.width
        text: section === "true" ? qsTr("Open") : qsTr("Paid and closed")
    }
    ScrollBar.vertical: ScrollBar {}

    delegate: BooksLine {
        id: invoice

        required property string invoiceId
        required title
        required property string customer
        required property string date
        required property string amount
        required property string remaining
        required property bool open
        required property string status
        required property bool voidable

        width: ListView.view.width
        subtitle: customer + " · " + date
        note: open ? qsTr("%1 remaining").arg(remaining) : status
        noteColour: open ? Theme.colours.warning : Theme.colours.secondaryText
        figure: amount

        ActionButton {
            visible: invoice.voidable
            kind: ActionButton.Plain
            text: qsTr("Void…")
            onClicked: (invoice.ListView.view as InvoiceList).voidAsked(invoice.invoiceId, invoice.title)
        }
    }
}
