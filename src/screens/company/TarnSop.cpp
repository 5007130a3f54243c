#include "screens/company/TarnSop.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSop TarnSop::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .category = json.string("category"_L1),
        .body = json.string("body"_L1),
        .author_name = json.string("author_name"_L1),
        .updated_at = json.string("updated_at"_L1) };
}
