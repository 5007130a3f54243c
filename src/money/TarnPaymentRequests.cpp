#include "money/TarnPaymentRequests.h"

using namespace Qt::StringLiterals;

QJsonObject TarnPaymentRefundAsk::toJSON() const
{
    return { { u"payment_id"_s, payment_id }, { u"amount"_s, amount }, { u"reason"_s, reason } };
}

QJsonObject TarnPaymentRefundNote::toJSON() const
{
    return { { u"note"_s, note } };
}

QJsonObject TarnPaymentCharge::toJSON() const
{
    return { { u"client_id"_s, client_id }, { u"invoice_id"_s, invoice_id }, { u"amount"_s, amount },
        { u"description"_s, description }, { u"confirmation"_s, QString::fromLatin1(confirmation) },
        { u"request_key"_s, request_key }, { u"payment_profile_id"_s, payment_profile_id } };
}

QJsonObject TarnPaymentOfflineRecord::toJSON() const
{
    return { { u"reference"_s, reference }, { u"paid_on"_s, paid_on } };
}

namespace {

template <typename T> void insertPresent(QJsonObject &object, const QString &key, const std::optional<T> &value)
{
    if (value)
        object.insert(key, *value);
}

} // namespace

QJsonObject TarnPaymentChange::toJSON() const
{
    QJsonObject body { { u"version"_s, version } };
    insertPresent(body, u"status"_s, status);
    insertPresent(body, u"reference"_s, reference);
    insertPresent(body, u"paid_on"_s, paid_on);
    return body;
}

QJsonObject TarnPaymentScheduleAction::toJSON() const
{
    QJsonObject body { { u"action"_s, action } };
    insertPresent(body, u"schedule_id"_s, schedule_id);
    insertPresent(body, u"client_id"_s, client_id);
    insertPresent(body, u"payment_profile_id"_s, payment_profile_id);
    insertPresent(body, u"amount"_s, amount);
    insertPresent(body, u"interval"_s, interval);
    insertPresent(body, u"next_on"_s, next_on);
    return body;
}

QJsonObject TarnCardSessionStart::toJSON() const
{
    return { { u"client_id"_s, client_id } };
}
