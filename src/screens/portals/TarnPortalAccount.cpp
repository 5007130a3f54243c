#include "screens/portals/TarnPortalAccount.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalAccount TarnPortalAccount::fromJSON(const TarnJSONObject &json)
{
    return { .client_id = json.string("client_id"_L1),
        .client_name = json.string("client_name"_L1),
        .status = json.string("status"_L1),
        .welcome = json.string("welcome"_L1),
        .lead_key_tail = json.optionalString("lead_key_tail"_L1),
        .pilo_key_tail = json.optionalString("pilo_key_tail"_L1),
        .people_count = json.integer("people_count"_L1),
        .open_alerts = json.integer("open_alerts"_L1),
        .refreshed_at = json.optionalString("refreshed_at"_L1),
        .version = json.integer("version"_L1) };
}
