#include "chat/huddle/TarnHuddleParticipant.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleParticipant TarnHuddleParticipant::fromJSON(const TarnJSONObject &json)
{
    return { .user_id = json.string("user_id"_L1),
        .name = json.string("name"_L1),
        .conn = json.string("conn"_L1),
        .muted = json.boolean("muted"_L1),
        .video = json.boolean("video"_L1),
        .screen = json.boolean("screen"_L1) };
}
