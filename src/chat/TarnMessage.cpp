#include "chat/TarnMessage.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMessage TarnMessage::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .user_id = json.string("user_id"_L1),
        .author = json.string("author"_L1),
        .body = json.string("body"_L1),
        .created_at = json.string("created_at"_L1),
        .seq = json.integer("seq"_L1),
        .deleted_at = json.optionalString("deleted_at"_L1),
        .reply_count = json.integer("reply_count"_L1),
        .attachments = json.list<TarnAttachment>("attachments"_L1),
        .parent_id = json.optionalString("parent_id"_L1),
        .version = json.optionalInteger("version"_L1),
        .reactions = json.optionalList<TarnReaction>("reactions"_L1),
        .saved = json.optionalBoolean("saved"_L1) };
}
