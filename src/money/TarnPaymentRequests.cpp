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
