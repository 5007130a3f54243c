#pragma once

#include <QList>
#include <QString>

struct TarnPayment;

// The figures above the payments list.
namespace TarnPaymentTotals {

struct Received {
    qint64 total = 0;
    qint64 count = 0;
    friend bool operator==(const Received &, const Received &) = default;
};

// The "Paid" payments of today's month: the month is the first seven
// characters of `today` ("YYYY-MM") and a payment belongs to it when its date
// starts with the same seven characters. A total overflowing 64-bit cents
// stops the program rather than show a wrapped figure.
[[nodiscard]] Received receivedInMonth(const QList<TarnPayment> &payments, const QString &today);

} // namespace TarnPaymentTotals
