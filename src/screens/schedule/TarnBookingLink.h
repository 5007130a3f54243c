#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A link clients open to book time with the person: `url` is the page they
// book on, `duration` the length of a booking in minutes, `bookings` how
// many are still to come and `next_at` the first of them.
struct TarnBookingLink {
    QString id;
    QString title;
    qint64 duration = 0;
    QString url;
    qint64 bookings = 0;
    std::optional<QString> next_at {};

    static TarnBookingLink fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnBookingLink &, const TarnBookingLink &) = default;
};
