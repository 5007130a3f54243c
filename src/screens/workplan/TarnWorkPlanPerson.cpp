#include "screens/workplan/TarnWorkPlanPerson.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnWorkPlanPerson TarnWorkPlanPerson::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .role = json.string("role"_L1),
        .entries = json.list<TarnWorkEntry>("entries"_L1),
        .coach_notes = json.list<TarnCoachNote>("coach_notes"_L1) };
}
