#include "screens/portals/TarnPortalWork.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalWork TarnPortalWork::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .status = json.string("status"_L1),
        .updated_at = json.string("updated_at"_L1) };
}
