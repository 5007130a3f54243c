#include "inbox/TarnInboxThreadSummary.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxThreadSummary TarnInboxThreadSummary::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .kind = json.string("kind"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .customer_address = json.string("customer_address"_L1),
        .owner_name = json.optionalString("owner_name"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .preview = json.string("preview"_L1),
        .preview_draft = json.boolean("preview_draft"_L1),
        .last_message_at = json.string("last_message_at"_L1),
        .unreplied = json.boolean("unreplied"_L1),
        .updated_at = json.optionalString("updated_at"_L1) };
}
