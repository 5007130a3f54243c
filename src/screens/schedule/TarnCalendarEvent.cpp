#include "screens/schedule/TarnCalendarEvent.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCalendarEvent TarnCalendarEvent::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .start_at = json.string("start_at"_L1),
        .end_at = json.string("end_at"_L1),
        .all_day = json.boolean("all_day"_L1),
        .kind = json.string("kind"_L1),
        .location = json.optionalString("location"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .calendar = json.string("calendar"_L1) };
}
