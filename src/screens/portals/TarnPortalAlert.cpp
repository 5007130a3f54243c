#include "screens/portals/TarnPortalAlert.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalAlert TarnPortalAlert::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .client_id = json.string("client_id"_L1),
        .client_name = json.string("client_name"_L1),
        .kind = json.string("kind"_L1),
        .text = json.string("text"_L1),
        .created_at = json.string("created_at"_L1) };
}
