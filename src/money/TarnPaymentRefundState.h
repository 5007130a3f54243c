#pragma once

#include "money/TarnPaymentPill.h"

#include <QHash>
#include <QList>
#include <QString>

struct TarnPaymentRefundRequest;

// The refunds of the listed payments, summed per payment: what is asked for
// and waiting ("Requested"), and what has gone back ("Refunded"). It decides
// what may still be refunded and the pill each payment shows.
class TarnPaymentRefundState {
public:
    struct Request {
        QString paymentID;
        qint64 amount = 0;
        QString status;

        static Request from(const TarnPaymentRefundRequest &record);
        friend bool operator==(const Request &, const Request &) = default;
    };

    TarnPaymentRefundState() = default;
    // Sums overflowing 64 bits stop the program: a wrapped refund total could
    // let money go back twice.
    explicit TarnPaymentRefundState(const QList<Request> &requests);

    [[nodiscard]] qint64 requested(const QString &id) const { return m_requested.value(id, 0); }
    [[nodiscard]] qint64 refunded(const QString &id) const { return m_refunded.value(id, 0); }

    [[nodiscard]] qint64 leftToRefund(const QString &id, qint64 amount) const;
    [[nodiscard]] bool canRefund(const QString &id, const QString &status, qint64 amount) const;
    [[nodiscard]] TarnPaymentPill pill(const QString &id, const QString &status, qint64 amount) const;

private:
    QHash<QString, qint64> m_requested;
    QHash<QString, qint64> m_refunded;
};
