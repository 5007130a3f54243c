#pragma once

#include "screens/schedule/TarnCalendarEvent.h"

#include <QList>

class TarnJSONObject;

// The connected Google calendar's events in a range, by start, as the mail
// service's "calendar.events" answers them.
struct TarnGoogleEvents {
    QList<TarnCalendarEvent> events;

    static TarnGoogleEvents fromJSON(const TarnJSONObject &json);
};
