#include "screens/support/TarnSupportTimeEntry.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportTimeEntry TarnSupportTimeEntry::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .task_id = json.string("task_id"_L1),
        .task_title = json.string("task_title"_L1),
        .person_id = json.string("person_id"_L1),
        .person_name = json.string("person_name"_L1),
        .minutes = json.integer("minutes"_L1),
        .day = json.string("day"_L1),
        .note = json.string("note"_L1) };
}
