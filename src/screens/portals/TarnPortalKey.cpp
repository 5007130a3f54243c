#include "screens/portals/TarnPortalKey.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalKey TarnPortalKey::fromJSON(const TarnJSONObject &json)
{
    return { .key = json.string("key"_L1), .tail = json.string("tail"_L1) };
}
