#include "screens/portals/TarnPortalPerson.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalPerson TarnPortalPerson::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .invited_at = json.string("invited_at"_L1),
        .last_seen_at = json.optionalString("last_seen_at"_L1) };
}
