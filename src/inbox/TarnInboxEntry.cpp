#include "inbox/TarnInboxEntry.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxEntry TarnInboxEntry::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .direction = json.string("direction"_L1),
        .body = json.string("body"_L1),
        .author_name = json.optionalString("author_name"_L1),
        .message_id = json.optionalString("message_id"_L1),
        .provider_key = json.optionalString("provider_key"_L1),
        .status = json.optionalString("status"_L1),
        .created_at = json.string("created_at"_L1),
        .mentions = json.list<QString>("mentions"_L1),
        .attachments = json.list<TarnInboxAttachment>("attachments"_L1),
        .can_discard = json.boolean("can_discard"_L1) };
}
