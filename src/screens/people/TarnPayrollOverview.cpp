#include "screens/people/TarnPayrollOverview.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPayrollOverview TarnPayrollOverview::fromJSON(const TarnJSONObject &json)
{
    return { .period = json.get<TarnPayrollPeriod>("period"_L1),
        .notes = json.string("notes"_L1),
        .version = json.integer("version"_L1),
        .lines = json.list<TarnPayrollLine>("lines"_L1),
        .total = json.integer("total"_L1),
        .periods = json.list<TarnPayrollPeriod>("periods"_L1) };
}
