#pragma once

#include <QString>

class TarnJSONObject;

// One person's week so far: calls in the call book, support tasks they hold
// open and closed since Monday, and minutes logged on support.
struct TarnTeamWeek {
    QString id {};
    QString name {};
    QString role {};
    qint64 calls = 0;
    qint64 support_open = 0;
    qint64 support_done = 0;
    qint64 support_minutes = 0;

    static TarnTeamWeek fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTeamWeek &, const TarnTeamWeek &) = default;
};
