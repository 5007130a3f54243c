#include "screens/portals/TarnPortalLink.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalLink TarnPortalLink::fromJSON(const TarnJSONObject &json)
{
    return { .url = json.string("url"_L1), .expires_at = json.string("expires_at"_L1) };
}
