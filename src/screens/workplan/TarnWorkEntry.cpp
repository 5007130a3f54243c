#include "screens/workplan/TarnWorkEntry.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnWorkEntry TarnWorkEntry::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .person_id = json.string("person_id"_L1),
        .kind = json.string("kind"_L1),
        .title = json.string("title"_L1),
        .day = json.string("day"_L1),
        .time = json.optionalString("time"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .notes = json.string("notes"_L1),
        .done = json.boolean("done"_L1),
        .done_by_name = json.optionalString("done_by_name"_L1),
        .version = json.integer("version"_L1) };
}
