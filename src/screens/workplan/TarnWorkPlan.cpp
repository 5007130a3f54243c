#include "screens/workplan/TarnWorkPlan.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnWorkPlan TarnWorkPlan::fromJSON(const TarnJSONObject &json)
{
    return { .week = json.string("week"_L1),
        .may_coach = json.boolean("may_coach"_L1),
        .people = json.list<TarnWorkPlanPerson>("people"_L1) };
}
