#pragma once

#include "money/TarnPaymentRecords.h"

#include <QList>

class TarnJSONObject;

// The payments terminal's list: every payment (refunds among them), every
// refund request whatever its state, the invoices still owed, and the
// customers a payment can be recorded for.
struct TarnPaymentsTerminal {
    QList<TarnPayment> payments;
    QList<TarnPaymentRefundRequest> refund_requests;
    QList<TarnOpenInvoice> open_invoices;
    QList<TarnPaymentClient> clients;

    static TarnPaymentsTerminal fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentsTerminal &, const TarnPaymentsTerminal &) = default;
};
