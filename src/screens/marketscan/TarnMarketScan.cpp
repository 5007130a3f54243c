#include "screens/marketscan/TarnMarketScan.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMarketScan TarnMarketScan::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .trade = json.string("trade"_L1),
        .area = json.string("area"_L1),
        .scanned_at = json.string("scanned_at"_L1),
        .found = json.integer("found"_L1),
        .high = json.integer("high"_L1),
        .businesses = json.optionalList<TarnMarketBusiness>("businesses"_L1).value_or(QList<TarnMarketBusiness>()) };
}
