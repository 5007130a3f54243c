#pragma once

#include <QDate>
#include <QString>

// One day of the shown week as the time clock lists it.
struct TimeClockDay {
    QDate date;
    qint64 seconds = 0;
    bool today = false;

    friend bool operator==(const TimeClockDay &, const TimeClockDay &) = default;
};
