#include "screens/documents/TarnEnvelopeSigner.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnEnvelopeSigner TarnEnvelopeSigner::fromJSON(const TarnJSONObject &json)
{
    return { .order = json.integer("order"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .status = json.string("status"_L1),
        .signed_at = json.optionalString("signed_at"_L1),
        .declined_at = json.optionalString("declined_at"_L1),
        .decline_reason = json.optionalString("decline_reason"_L1),
        .answered_from = json.optionalString("answered_from"_L1),
        .sign_url = json.optionalString("sign_url"_L1),
        .link_expires_at = json.optionalString("link_expires_at"_L1) };
}
