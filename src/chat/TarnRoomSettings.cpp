#include "chat/TarnRoomSettings.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnRoomSettings TarnRoomSettings::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .kind = json.string("kind"_L1),
        .created_by = json.string("created_by"_L1),
        .private_ = json.boolean("private"_L1),
        .archived = json.boolean("archived"_L1),
        .members = json.list<QString>("members"_L1) };
}
