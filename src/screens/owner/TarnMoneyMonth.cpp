#include "screens/owner/TarnMoneyMonth.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMoneyMonth TarnMoneyMonth::fromJSON(const TarnJSONObject &json)
{
    return { .month = json.string("month"_L1),
        .money_in = json.integer("money_in"_L1),
        .money_out = json.integer("money_out"_L1) };
}
