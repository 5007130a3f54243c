#include "screens/overview/TarnTeamActivity.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTeamActivity TarnTeamActivity::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .role = json.string("role"_L1),
        .clocked_in = json.boolean("clocked_in"_L1),
        .working_on = json.optionalString("working_on"_L1),
        .working_for = json.optionalString("working_for"_L1),
        .open_tasks = json.integer("open_tasks"_L1),
        .next_event = json.optionalString("next_event"_L1),
        .next_at = json.optionalString("next_at"_L1) };
}
