import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// Asks the day a bill, invoice, bill payment or receipt is voided on, then
// voids it; a day refused here keeps the sheet open with the reason under
// the field.
ConfirmSheet {
    id: sheet

    required property NativeBooksView view
    // What NativeBooksView::voidRecord takes: "bill", "invoice",
    // "bill_payment" or "receipt".
    property string kind
    property string recordId
    property bool refused: false

    function ask(recordKind: string, id: string, what: string) {
        kind = recordKind
        recordId = id
        refused = false
        title = qsTr("Void %1").arg(what)
        voidDate.text = view.periodEnd
        open()
    }

    text: kind === "bill_payment" ? qsTr("The payment's entry is reversed on this day and its bill is owed again.")
        : kind === "receipt" ? qsTr("The receipt's entry is reversed on this day and its invoice is owed again.")
        : qsTr("The entry is reversed on this day and nothing more is owed on it.")
    confirmText: qsTr("Void")
    destructive: true
    onConfirmed: {
        refused = !view.voidRecord(kind, recordId, voidDate.text)
        if (refused)
            open()
    }

    FormField {
        id: voidDate

        objectName: "voidDate"
        label: qsTr("Day (YYYY-MM-DD)")
        error: sheet.refused ? sheet.view.formError : ""
        input.onTextEdited: sheet.refused = false
        Layout.fillWidth: true
    }
}
