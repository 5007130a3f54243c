#pragma once

#include "money/TarnPaymentRecords.h"

#include <QList>

class TarnJSONObject;

// The payments terminal's list: every payment (refunds among them), every
// refund request whatever its state, and the invoices still owed.
struct TarnPaymentsTerminal {
    QList<TarnPayment> payments;
    QList<TarnPaymentRefundRequest> refund_requests;
    QList<TarnOpenInvoice> open_invoices;

    static TarnPaymentsTerminal fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentsTerminal &, const TarnPaymentsTerminal &) = default;
};
