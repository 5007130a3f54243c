#include "screens/portals/TarnPortalDashboard.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalDashboard TarnPortalDashboard::fromJSON(const TarnJSONObject &json)
{
    return { .accounts = json.list<TarnPortalAccount>("accounts"_L1),
        .alerts = json.list<TarnPortalAlert>("alerts"_L1) };
}
