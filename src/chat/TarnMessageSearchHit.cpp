#include "chat/TarnMessageSearchHit.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMessageSearchHit TarnMessageSearchHit::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .room_id = json.string("room_id"_L1),
        .parent_id = json.optionalString("parent_id"_L1),
        .body = json.string("body"_L1),
        .author = json.string("author"_L1),
        .room_name = json.string("room_name"_L1),
        .created_at = json.string("created_at"_L1) };
}
