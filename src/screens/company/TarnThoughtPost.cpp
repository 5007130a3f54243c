#include "screens/company/TarnThoughtPost.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnThoughtPost TarnThoughtPost::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .body = json.string("body"_L1),
        .author_name = json.string("author_name"_L1),
        .created_at = json.string("created_at"_L1),
        .read = json.boolean("read"_L1),
        .decision = json.optionalString("decision"_L1),
        .decided_by_name = json.optionalString("decided_by_name"_L1),
        .version = json.integer("version"_L1) };
}
