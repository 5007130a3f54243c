#include "screens/owner/TarnTeamWeek.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTeamWeek TarnTeamWeek::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .role = json.string("role"_L1),
        .calls = json.integer("calls"_L1),
        .support_open = json.integer("support_open"_L1),
        .support_done = json.integer("support_done"_L1),
        .support_minutes = json.integer("support_minutes"_L1) };
}
