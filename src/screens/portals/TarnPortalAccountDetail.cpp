#include "screens/portals/TarnPortalAccountDetail.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPortalAccountDetail TarnPortalAccountDetail::fromJSON(const TarnJSONObject &json)
{
    return { .account = json.get<TarnPortalAccount>("account"_L1),
        .people = json.list<TarnPortalPerson>("people"_L1),
        .reports = json.list<TarnPortalReport>("reports"_L1),
        .work = json.list<TarnPortalWork>("work"_L1) };
}
