#include "screens/schedule/TarnBooking.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBooking TarnBooking::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .start_at = json.string("start_at"_L1),
        .note = json.optionalString("note"_L1) };
}
