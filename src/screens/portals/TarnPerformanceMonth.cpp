#include "screens/portals/TarnPerformanceMonth.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPerformanceMonth TarnPerformanceMonth::fromJSON(const TarnJSONObject &json)
{
    return { .month = json.string("month"_L1),
        .visits = json.integer("visits"_L1),
        .leads = json.integer("leads"_L1),
        .calls = json.integer("calls"_L1),
        .revenue = json.integer("revenue"_L1) };
}
