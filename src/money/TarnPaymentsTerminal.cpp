#include "money/TarnPaymentsTerminal.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPaymentsTerminal TarnPaymentsTerminal::fromJSON(const TarnJSONObject &json)
{
    return {
        .payments = json.list<TarnPayment>("payments"_L1),
        .refund_requests = json.list<TarnPaymentRefundRequest>("refund_requests"_L1),
        .open_invoices = json.list<TarnOpenInvoice>("open_invoices"_L1),
        .clients = json.list<TarnPaymentClient>("clients"_L1),
    };
}
