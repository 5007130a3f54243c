#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One event of the person's calendar. `start_at` and `end_at` are UTC instants
// (ISO 8601); an all-day event covers its days from local midnight to local
// midnight. `kind` is "meeting", "call", "booking" (booked by a client through
// a booking link) or "focus". `calendar` is where it is kept: "workspace",
// or "google" for the connected Google account's calendar.
struct TarnCalendarEvent {
    QString id;
    QString title;
    QString start_at;
    QString end_at;
    bool all_day = false;
    QString kind;
    std::optional<QString> location {};
    std::optional<QString> client_name {};
    QString calendar {};

    static TarnCalendarEvent fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCalendarEvent &, const TarnCalendarEvent &) = default;
};
