#include "money/TarnPaymentRefundState.h"

#include "money/TarnCents.h"
#include "money/TarnPaymentRecords.h"

using namespace Qt::StringLiterals;

TarnPaymentRefundState::Request TarnPaymentRefundState::Request::from(const TarnPaymentRefundRequest &record)
{
    return { .paymentID = record.payment_id, .amount = record.amount, .status = record.status };
}

TarnPaymentRefundState::TarnPaymentRefundState(const QList<Request> &requests)
{
    for (const Request &request : requests) {
        QHash<QString, qint64> *sums = nullptr;
        if (request.status == "Requested"_L1)
            sums = &m_requested;
        else if (request.status == "Refunded"_L1)
            sums = &m_refunded;
        else
            continue;
        qint64 &sum = (*sums)[request.paymentID];
        sum = TarnCents::add(sum, request.amount);
    }
}

qint64 TarnPaymentRefundState::leftToRefund(const QString &id, qint64 amount) const
{
    return TarnCents::subtract(TarnCents::subtract(amount, requested(id)), refunded(id));
}

bool TarnPaymentRefundState::canRefund(const QString &id, const QString &status, qint64 amount) const
{
    return status == "Paid"_L1 && requested(id) == 0 && !id.startsWith("refund-"_L1) && leftToRefund(id, amount) > 0;
}

TarnPaymentPill TarnPaymentRefundState::pill(const QString &id, const QString &status, qint64 amount) const
{
    const qint64 back = refunded(id);
    if (requested(id) >= 1)
        return { 2, u"Refund requested"_s };
    if (status == "Paid"_L1) {
        if (back >= amount && back >= 1)
            return { 3, u"Refunded"_s };
        if (back > 0)
            return { 0, u"Partly refunded"_s };
        return { 0, status };
    }
    if (status == "Pending"_L1)
        return { 1, status };
    return { 3, status };
}
