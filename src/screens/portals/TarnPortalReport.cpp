#include "screens/portals/TarnPortalReport.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalReport TarnPortalReport::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .client_id = json.string("client_id"_L1),
        .title = json.string("title"_L1),
        .month = json.string("month"_L1),
        .body = json.string("body"_L1),
        .published = json.boolean("published"_L1),
        .created_at = json.string("created_at"_L1) };
}
