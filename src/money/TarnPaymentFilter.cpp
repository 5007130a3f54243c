#include "money/TarnPaymentFilter.h"

#include "money/TarnPaymentRecords.h"
#include "money/TarnPaymentRefundState.h"

using namespace Qt::StringLiterals;

bool matches(TarnPaymentFilter filter, const TarnPayment &payment, const TarnPaymentRefundState &refunds)
{
    const bool isRefund = payment.id.startsWith("refund-"_L1);
    const qint64 back = refunds.refunded(payment.id);
    switch (filter) {
    case TarnPaymentFilter::all:
        return true;
    case TarnPaymentFilter::paid:
        return payment.status == "Paid"_L1 && !isRefund && !(back >= 1 && back >= payment.amount);
    case TarnPaymentFilter::pending:
        return payment.status == "Pending"_L1;
    case TarnPaymentFilter::refunded:
        return isRefund || back > 0 || payment.status == "Refunded"_L1;
    }
    return false;
}
