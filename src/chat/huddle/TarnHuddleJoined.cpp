#include "chat/huddle/TarnHuddleJoined.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleJoined TarnHuddleJoined::fromJSON(const TarnJSONObject &json)
{
    return { .sid = json.string("sid"_L1),
        .conn = json.string("conn"_L1),
        .state = json.get<TarnHuddleState>("state"_L1),
        .ice_servers = json.list<TarnHuddleIceServer>("ice_servers"_L1) };
}
