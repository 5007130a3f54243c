#include "screens/marketscan/NativeMarketBusinessModel.h"

#include "screens/marketscan/MarketScanRules.h"

using namespace Qt::StringLiterals;
using Row = TarnMarketBusiness;

NativeMarketBusinessModel::NativeMarketBusinessModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "businessId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "place",
                [](const Row &r) {
                    return QString(r.address + u" · "_s + MarketScanRules::distanceLabel(r.distance_km));
                } },
            { "rating", [](const Row &r) { return MarketScanRules::ratingLabel(r); } },
            { "site", [](const Row &r) { return MarketScanRules::siteLabel(r); } },
            { "website", [](const Row &r) { return r.website.value_or(QString()); } },
            { "opportunity", [](const Row &r) { return r.opportunity; } },
            { "reasons", [](const Row &r) { return r.reasons.join(u" · "_s); } },
        },
        parent)
{
}
