#include "money/TarnPaymentRecords.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPayment TarnPayment::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .client = json.string("client"_L1),
        .amount = json.integer("amount"_L1),
        .status = json.string("status"_L1),
        .date = json.string("date"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .invoice_id = json.optionalString("invoice_id"_L1),
        .method = json.optionalString("method"_L1),
        .reference = json.optionalString("reference"_L1),
        .version = json.optionalInteger("version"_L1),
    };
}

TarnOpenInvoice TarnOpenInvoice::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .client_id = json.string("client_id"_L1),
        .client = json.string("client"_L1),
        .invoice_number = json.optionalString("invoice_number"_L1),
        .due_on = json.string("due_on"_L1),
        .amount = json.integer("amount"_L1),
        .remaining = json.integer("remaining"_L1),
    };
}

TarnPaymentClient TarnPaymentClient::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1), .name = json.string("name"_L1) };
}

TarnPaymentCard TarnPaymentCard::fromJSON(const TarnJSONObject &json)
{
    return {
        .payment_profile_id = json.string("payment_profile_id"_L1),
        .card_type = json.string("card_type"_L1),
        .last4 = json.string("last4"_L1),
        .expiration = json.string("expiration"_L1),
        .saved = json.optionalBoolean("saved"_L1),
    };
}

TarnPaymentRefundRequest TarnPaymentRefundRequest::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .payment_id = json.string("payment_id"_L1),
        .amount = json.integer("amount"_L1),
        .status = json.string("status"_L1),
        .reason = json.optionalString("reason"_L1),
    };
}

TarnRefundAction TarnRefundAction::fromJSON(const TarnJSONObject &json)
{
    return { .status = json.string("status"_L1) };
}

TarnChargeReceipt TarnChargeReceipt::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .status = json.string("status"_L1),
        .amount = json.integer("amount"_L1),
    };
}

TarnPaymentSchedule TarnPaymentSchedule::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .client_id = json.string("client_id"_L1),
        .payment_profile_id = json.string("payment_profile_id"_L1),
        .amount = json.integer("amount"_L1),
        .interval = json.string("interval"_L1),
        .next_on = json.string("next_on"_L1),
        .status = json.string("status"_L1),
    };
}

TarnCardSession TarnCardSession::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1), .url = json.string("url"_L1), .expires_at = json.string("expires_at"_L1) };
}

TarnCardSessionProgress TarnCardSessionProgress::fromJSON(const TarnJSONObject &json)
{
    return { .status = json.string("status"_L1), .card = json.optional<TarnPaymentCard>("card"_L1) };
}

QJsonObject TarnPaymentRecordDraft::toJSON() const
{
    return { { u"client_id"_s, clientID }, { u"amount"_s, amount }, { u"status"_s, status },
        { u"reference"_s, reference }, { u"paid_on"_s, paidOn } };
}
