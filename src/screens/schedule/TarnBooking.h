#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// Time a client booked through a link: who, when (a UTC instant) and what
// they wrote.
struct TarnBooking {
    QString id;
    QString name;
    QString email;
    QString start_at;
    std::optional<QString> note {};

    static TarnBooking fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnBooking &, const TarnBooking &) = default;
};
