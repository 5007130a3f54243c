#include "screens/websites/TarnSiteCheck.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSiteFinding TarnSiteFinding::fromJSON(const TarnJSONObject &json)
{
    return { .severity = json.string("severity"_L1), .text = json.string("text"_L1) };
}

TarnSiteCheck TarnSiteCheck::fromJSON(const TarnJSONObject &json)
{
    return { .url = json.string("url"_L1),
        .checked_at = json.string("checked_at"_L1),
        .overall = json.integer("overall"_L1),
        .speed = json.integer("speed"_L1),
        .mobile = json.integer("mobile"_L1),
        .seo = json.integer("seo"_L1),
        .security = json.integer("security"_L1),
        .accessibility = json.integer("accessibility"_L1),
        .findings = json.list<TarnSiteFinding>("findings"_L1) };
}
