#include "screens/workplan/TarnCoachNote.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCoachNote TarnCoachNote::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .author_name = json.string("author_name"_L1),
        .body = json.string("body"_L1),
        .created_at = json.string("created_at"_L1) };
}
