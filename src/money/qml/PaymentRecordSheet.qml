import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// Records a payment taken outside the terminal and not tied to an invoice:
// who paid, how much, whether the money has arrived, its reference and day.
// The view checks the form; a refused one stays open with the reason.
ConfirmSheet {
    id: sheet

    required property NativePaymentsView view
    property bool paid: true
    property bool refused: false

    function ask() {
        refused = false;
        paid = true;
        recordAmount.text = "";
        recordReference.text = "";
        recordPaidOn.text = Qt.formatDate(new Date(), "yyyy-MM-dd");
        // The client shown beside the list is the likeliest payer.
        recordClient.currentIndex = Math.max(0, recordClient.indexOfValue(view.client.clientId));
        open();
    }

    objectName: "recordSheet"
    title: qsTr("Record a payment")
    text: qsTr("A cheque or a bank transfer that is not for one of the open invoices.")
    confirmText: qsTr("Record payment")
    onConfirmed: {
        refused = !view.recordPayment(recordClient.currentValue ?? "", recordAmount.text, paid,
                                      recordReference.text, recordPaidOn.text);
        if (refused)
            open();
    }

    ComboBox {
        id: recordClient

        objectName: "recordClient"
        model: sheet.view.clients
        textRole: "name"
        valueRole: "clientId"
        Accessible.name: qsTr("Client")
        Layout.fillWidth: true
    }
    FormField {
        id: recordAmount

        objectName: "recordAmount"
        label: qsTr("Amount in USD")
        input.onTextEdited: sheet.refused = false
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: Theme.spacing.xs
        ActionButton {
            objectName: "recordPaid"
            text: qsTr("Received")
            kind: sheet.paid ? ActionButton.Primary : ActionButton.Plain
            onClicked: sheet.paid = true
        }
        ActionButton {
            objectName: "recordPending"
            text: qsTr("Still pending")
            kind: sheet.paid ? ActionButton.Plain : ActionButton.Primary
            onClicked: sheet.paid = false
        }
    }
    FormField {
        id: recordReference

        objectName: "recordReference"
        label: qsTr("Reference")
        placeholderText: qsTr("Cheque 1042, transfer from …")
        input.onTextEdited: sheet.refused = false
        Layout.fillWidth: true
    }
    FormField {
        id: recordPaidOn

        objectName: "recordPaidOn"
        label: qsTr("Paid on")
        placeholderText: "YYYY-MM-DD"
        input.onTextEdited: sheet.refused = false
        Layout.fillWidth: true
    }
    Text {
        objectName: "recordError"
        visible: sheet.refused
        text: sheet.view.formError
        wrapMode: Text.Wrap
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.danger
        Layout.fillWidth: true
    }
}
