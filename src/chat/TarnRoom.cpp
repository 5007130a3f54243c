#include "chat/TarnRoom.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnRoom TarnRoom::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .kind = json.string("kind"_L1),
        .unread = json.integer("unread"_L1),
        .list_rank = json.optionalInteger("list_rank"_L1),
        .listed = json.optionalBoolean("listed"_L1) };
}
