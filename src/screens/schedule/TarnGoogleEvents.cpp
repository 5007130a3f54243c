#include "screens/schedule/TarnGoogleEvents.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnGoogleEvents TarnGoogleEvents::fromJSON(const TarnJSONObject &json)
{
    return { .events = json.list<TarnCalendarEvent>("events"_L1) };
}
