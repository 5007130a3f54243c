#include "screens/marketscan/TarnMarketBusiness.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMarketBusiness TarnMarketBusiness::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .address = json.string("address"_L1),
        .distance_km = json.number("distance_km"_L1),
        .rating = json.optional<double>("rating"_L1),
        .reviews = json.integer("reviews"_L1),
        .website = json.optionalString("website"_L1),
        .site_score = json.optionalInteger("site_score"_L1),
        .online_booking = json.boolean("online_booking"_L1),
        .texting = json.boolean("texting"_L1),
        .opportunity = json.string("opportunity"_L1),
        .reasons = json.list<QString>("reasons"_L1) };
}
