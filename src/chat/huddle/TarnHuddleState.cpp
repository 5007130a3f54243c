#include "chat/huddle/TarnHuddleState.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleState TarnHuddleState::fromJSON(const TarnJSONObject &json)
{
    return { .active = json.boolean("active"_L1),
        .id = json.optionalString("id"_L1),
        .room_id = json.optionalString("room_id"_L1),
        .room_name = json.optionalString("room_name"_L1),
        .started_by = json.optionalString("started_by"_L1),
        .version = json.optionalInteger("version"_L1),
        .participants = json.optionalList<TarnHuddleParticipant>("participants"_L1),
        .joined = json.optionalBoolean("joined"_L1),
        .ringing = json.optionalBoolean("ringing"_L1) };
}
