#include "money/TarnPaymentTotals.h"

#include "money/TarnPaymentRecords.h"

using namespace Qt::StringLiterals;

TarnPaymentTotals::Received TarnPaymentTotals::receivedInMonth(const QList<TarnPayment> &payments, const QString &today)
{
    const QStringView month = QStringView(today).left(7);
    Received received;
    for (const TarnPayment &payment : payments) {
        if (payment.status != "Paid"_L1 || QStringView(payment.date).left(7) != month)
            continue;
        if (__builtin_add_overflow(received.total, payment.amount, &received.total))
            qFatal("month total overflows 64-bit cents");
        ++received.count;
    }
    return received;
}
