import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The payments terminal: the month's received total, the payments filtered
// by state with their pills, refunds asked for and decided, offline payments
// recorded (Ctrl+N) and marked paid, the open invoices charged to a saved
// card or marked paid offline, and beside them the chosen client's cards and
// recurring charges. Every check and call is the view's; a refused form
// stays open with the field marked.
ColumnLayout {
    id: terminal

    required property NativePaymentsView view

    spacing: Theme.spacing.m

    Component.onCompleted: view.reload()

    RowLayout {
        spacing: Theme.spacing.xs
        Layout.fillWidth: true

        ActionButton {
            objectName: "filter-all"
            text: qsTr("All")
            kind: terminal.view.filter === "all" ? ActionButton.Primary : ActionButton.Plain
            onClicked: terminal.view.filter = "all"
        }
        ActionButton {
            objectName: "filter-paid"
            text: qsTr("Paid")
            kind: terminal.view.filter === "paid" ? ActionButton.Primary : ActionButton.Plain
            onClicked: terminal.view.filter = "paid"
        }
        ActionButton {
            objectName: "filter-pending"
            text: qsTr("Pending")
            kind: terminal.view.filter === "pending" ? ActionButton.Primary : ActionButton.Plain
            onClicked: terminal.view.filter = "pending"
        }
        ActionButton {
            objectName: "filter-refunded"
            text: qsTr("Refunded")
            kind: terminal.view.filter === "refunded" ? ActionButton.Primary : ActionButton.Plain
            onClicked: terminal.view.filter = "refunded"
        }
        Item { Layout.fillWidth: true }
        ActionButton {
            objectName: "recordPayment"
            text: qsTr("Record payment")
            symbol: "plus"
            kind: ActionButton.Primary
            onClicked: recordSheet.ask()
        }
        ColumnLayout {
            spacing: 0
            Layout.leftMargin: Theme.spacing.l
            Text {
                text: qsTr("Received this month")
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.alignment: Qt.AlignRight
            }
            Text {
                objectName: "receivedTotal"
                text: terminal.view.receivedTotal
                font.pixelSize: Theme.type.title2
                font.weight: Font.DemiBold
                color: Theme.colours.text
                Layout.alignment: Qt.AlignRight
            }
            Text {
                text: terminal.view.receivedCount === 1 ? qsTr("1 payment")
                                                        : qsTr("%1 payments").arg(terminal.view.receivedCount)
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.alignment: Qt.AlignRight
            }
        }
    }

    ErrorBanner {
        visible: text.length > 0
        text: terminal.view.error
        retryable: true
        onRetry: terminal.view.reload()
        Layout.fillWidth: true
    }
    ErrorBanner {
        objectName: "formError"
        visible: text.length > 0 && !refundSheet.opened && !offlineSheet.opened && !recordSheet.opened
        text: terminal.view.formError
        Layout.fillWidth: true
    }

    RowLayout {
        spacing: Theme.spacing.xl
        Layout.fillWidth: true
        Layout.fillHeight: true

        ColumnLayout {
            spacing: Theme.spacing.m
            Layout.fillWidth: true
            Layout.fillHeight: true

            SectionHeader {
                text: qsTr("Payments")
                Layout.fillWidth: true
            }

            LoadingPlaceholder {
                visible: terminal.view.loading && payments.count === 0
                rows: 4
                Layout.fillWidth: true
            }
            EmptyState {
                visible: !terminal.view.loading && payments.count === 0 && terminal.view.error.length === 0
                symbol: "creditcard"
                title: qsTr("No payments")
                text: terminal.view.filter === "all" ? qsTr("Card and offline payments show here as they arrive.")
                                                     : qsTr("No payment is in this state.")
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            ScrollView {
                visible: payments.count > 0
                contentWidth: availableWidth
                clip: true
                Layout.fillWidth: true
                Layout.fillHeight: true

                // A positioner, not a layout, around the repeated rows: Qt 6.4's
                // layouts can touch a half-destroyed row while they are torn down.
                Column {
                    id: paymentRows

                    width: parent.width

                    Repeater {
                        id: payments

                        objectName: "payments"
                        model: terminal.view.payments
                        onItemAdded: (index, item) => {
                            item.width = Qt.binding(() => paymentRows.width)
                            item.refundAsked.connect(() => refundSheet.ask(item.paymentId, item.client, item.leftToRefund))
                            item.decisionAsked.connect(() => decideSheet.ask(item.requestId, item.client))
                            item.markPaidAsked.connect(() => terminal.view.markPaid(item.paymentId))
                        }

                        PaymentLine {}
                    }
                }
            }

            SectionHeader {
                visible: invoices.count > 0
                text: qsTr("Open invoices")
                Layout.fillWidth: true
            }

            ScrollView {
                visible: invoices.count > 0
                contentWidth: availableWidth
                clip: true
                Layout.fillWidth: true
                Layout.preferredHeight: Math.min(contentHeight, terminal.height / 4)

                Column {
                    id: invoiceRows

                    width: parent.width

                    Repeater {
                        id: invoices

                        objectName: "openInvoices"
                        model: terminal.view.openInvoices
                        onItemAdded: (index, item) => {
                            item.width = Qt.binding(() => invoiceRows.width)
                            item.busy = Qt.binding(() => terminal.view.busy)
                            item.chargeAsked.connect(() => chargeSheet.ask(item.invoiceId, item.number, item.remaining))
                            item.recordAsked.connect(() => offlineSheet.ask(item.invoiceId, item.number))
                        }

                        InvoiceLine {}
                    }
                }
            }
        }

        // A frame of fixed size: the panel's wrapped texts change its height
        // as it is laid out, which must not lay the whole screen out again.
        Item {
            Layout.preferredWidth: 290
            Layout.fillHeight: true

            PaymentClientPanel {
                objectName: "clientPanel"
                anchors.fill: parent
                panel: terminal.view.client
                clients: terminal.view.clients
            }
        }
    }

    ConfirmSheet {
        id: refundSheet

        objectName: "refundSheet"

        property string paymentId
        property bool refused: false

        function ask(id: string, client: string, left: string) {
            paymentId = id;
            refused = false;
            title = qsTr("Refund %1").arg(client);
            text = qsTr("Up to %1 is left to refund. The owner approves the refund before money moves.").arg(left);
            refundAmount.text = left;
            refundReason.text = "";
            open();
        }

        confirmText: qsTr("Request refund")
        onConfirmed: {
            refused = !terminal.view.requestRefund(paymentId, refundAmount.text, refundReason.text);
            if (refused)
                open();
        }

        FormField {
            id: refundAmount

            objectName: "refundAmount"
            label: qsTr("Amount in USD")
            error: refundSheet.refused ? terminal.view.formError : ""
            input.onTextEdited: refundSheet.refused = false
            Layout.fillWidth: true
        }
        FormField {
            id: refundReason

            label: qsTr("Reason")
            Layout.fillWidth: true
        }
    }

    ConfirmSheet {
        id: decideSheet

        objectName: "decideSheet"

        property string requestId
        property bool approve: true

        function ask(id: string, client: string) {
            requestId = id;
            title = qsTr("Refund for %1").arg(client);
            text = qsTr("Approving sends the money back to the client; denying leaves the payment as it is.");
            decisionNote.text = "";
            open();
        }

        confirmText: approve ? qsTr("Approve refund") : qsTr("Deny refund")
        destructive: !approve
        onConfirmed: terminal.view.decideRefund(requestId, approve, decisionNote.text)

        RowLayout {
            spacing: Theme.spacing.xs
            ActionButton {
                text: qsTr("Approve")
                kind: decideSheet.approve ? ActionButton.Primary : ActionButton.Plain
                onClicked: decideSheet.approve = true
            }
            ActionButton {
                text: qsTr("Deny")
                kind: decideSheet.approve ? ActionButton.Plain : ActionButton.Primary
                onClicked: decideSheet.approve = false
            }
        }
        FormField {
            id: decisionNote

            label: qsTr("Note")
            Layout.fillWidth: true
        }
    }

    ConfirmSheet {
        id: chargeSheet

        property string invoiceId

        function ask(id: string, number: string, remaining: string) {
            invoiceId = id;
            title = qsTr("Charge %1 for invoice %2").arg(remaining).arg(number);
            text = qsTr("The card is charged once, even if the answer is lost and you try again.");
            terminal.view.chooseInvoice(id);
            open();
        }

        confirmText: qsTr("Charge card")
        onConfirmed: terminal.view.charge(invoiceId, cardChoice.currentValue ?? "")

        ComboBox {
            id: cardChoice

            objectName: "cardChoice"
            model: terminal.view.cards
            textRole: "label"
            valueRole: "profileId"
            enabled: count > 0
            displayText: count > 0 ? currentText : qsTr("No saved card")
            Layout.fillWidth: true
        }
    }

    ConfirmSheet {
        id: offlineSheet

        objectName: "offlineSheet"

        property string invoiceId
        property bool refused: false

        function ask(id: string, number: string) {
            invoiceId = id;
            refused = false;
            title = qsTr("Record a payment of invoice %1").arg(number);
            text = qsTr("For money received outside the terminal, by cheque or bank transfer.");
            offlineReference.text = "";
            offlinePaidOn.text = Qt.formatDate(new Date(), "yyyy-MM-dd");
            open();
        }

        confirmText: qsTr("Record payment")
        onConfirmed: {
            refused = !terminal.view.recordOffline(invoiceId, offlineReference.text, offlinePaidOn.text);
            if (refused)
                open();
        }

        FormField {
            id: offlineReference

            objectName: "offlineReference"

            label: qsTr("Reference")
            // The view checks the reference before the day.
            error: offlineSheet.refused && text.trim().length === 0 ? terminal.view.formError : ""
            input.onTextEdited: offlineSheet.refused = false
            Layout.fillWidth: true
        }
        FormField {
            id: offlinePaidOn

            objectName: "offlinePaidOn"

            label: qsTr("Paid on")
            placeholderText: "YYYY-MM-DD"
            error: offlineSheet.refused && offlineReference.text.trim().length > 0 ? terminal.view.formError : ""
            input.onTextEdited: offlineSheet.refused = false
            Layout.fillWidth: true
        }
    }

    PaymentRecordSheet {
        id: recordSheet

        view: terminal.view
    }
    Shortcut {
        sequence: "Ctrl+N"
        onActivated: recordSheet.ask()
    }

    DoneNotice {
        id: notice

        Layout.fillWidth: true
    }
    Connections {
        target: terminal.view
        function onDone(message: string) {
            notice.show(message)
        }
    }
}
