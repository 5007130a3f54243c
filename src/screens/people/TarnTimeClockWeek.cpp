#include "screens/people/TarnTimeClockWeek.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTimeClockWeek TarnTimeClockWeek::fromJSON(const TarnJSONObject &json)
{
    return { .person_id = json.string("person_id"_L1),
        .person_name = json.string("person_name"_L1),
        .week = json.string("week"_L1),
        .clocked_in = json.boolean("clocked_in"_L1),
        .entries = json.list<TarnTimeEntry>("entries"_L1) };
}
