#include "screens/people/TarnPayrollLine.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPayrollLine TarnPayrollLine::fromJSON(const TarnJSONObject &json)
{
    return { .person_id = json.string("person_id"_L1),
        .person_name = json.string("person_name"_L1),
        .rate = json.integer("rate"_L1),
        .minutes = json.integer("minutes"_L1),
        .regular_pay = json.integer("regular_pay"_L1),
        .adjustments = json.list<TarnPayrollAdjustment>("adjustments"_L1),
        .total = json.integer("total"_L1) };
}
