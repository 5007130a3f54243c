#include "money/TarnPaymentTotals.h"

#include "money/TarnCents.h"
#include "money/TarnPaymentRecords.h"

using namespace Qt::StringLiterals;

TarnPaymentTotals::Received TarnPaymentTotals::receivedInMonth(const QList<TarnPayment> &payments, const QString &today)
{
    const QStringView month = QStringView(today).left(7);
    Received received;
    for (const TarnPayment &payment : payments) {
        if (payment.status != "Paid"_L1 || QStringView(payment.date).left(7) != month)
            continue;
        received.total = TarnCents::add(received.total, payment.amount);
        ++received.count;
    }
    return received;
}
