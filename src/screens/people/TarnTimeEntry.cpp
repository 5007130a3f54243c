#include "screens/people/TarnTimeEntry.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTimeEntry TarnTimeEntry::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .person_id = json.string("person_id"_L1),
        .person_name = json.string("person_name"_L1),
        .clock_in = json.string("clock_in"_L1),
        .clock_out = json.optionalString("clock_out"_L1),
        .edited_by_name = json.optionalString("edited_by_name"_L1),
        .edited_at = json.optionalString("edited_at"_L1),
        .edit_reason = json.optionalString("edit_reason"_L1),
        .version = json.integer("version"_L1) };
}
