#include "screens/schedule/TarnBookingLink.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBookingLink TarnBookingLink::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .duration = json.integer("duration"_L1),
        .url = json.string("url"_L1),
        .bookings = json.integer("bookings"_L1),
        .next_at = json.optionalString("next_at"_L1) };
}
