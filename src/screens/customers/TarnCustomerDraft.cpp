#include "screens/customers/TarnCustomerDraft.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCustomerDraft TarnCustomerDraft::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .channel = json.string("channel"_L1),
        .subject = json.string("subject"_L1),
        .body = json.string("body"_L1),
        .created_at = json.string("created_at"_L1) };
}
