import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Money

// Bills with the payments made on them, or receipts under the invoices they
// settle (NativeBooksView's bills or receipts), each under its bill's or
// invoice's title, with a way to void what still stands.
ListView {
    id: list

    signal voidAsked(string kind, string recordId, string title)

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    section.property: "section"
    section.delegate: SectionHeader {
        required property string section
        width: ListView.view.width
        text: section
    }
    ScrollBar.vertical: ScrollBar {}

    delegate: BooksLine {
        id: record

        required property string kind
        required property string recordId
        required property string section
        required title
        required property string date
        required property string amount
        required property string status
        required property bool voidable

        width: ListView.view.width
        subtitle: date
        note: status
        figure: amount

        ActionButton {
            visible: record.voidable
            kind: ActionButton.Plain
            text: qsTr("Void…")
            onClicked: (record.ListView.view as DocumentList).voidAsked(record.kind, record.recordId,
                record.kind === "bill" ? record.section : qsTr("%1 on %2").arg(record.title.toLowerCase()).arg(record.section))
        }
    }
}
