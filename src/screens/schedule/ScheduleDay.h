#pragma once

#include <QString>
#include <QVariantList>

// One day of the shown week as the calendar draws it: its date
// ("yyyy-MM-dd", the key), its heading ("Mon 23"), whether it is today, and
// its events, each a map of `eventId`, `title`, `kind`, `location`, `time`
// (the label), `allDay`, and `start` and `end` in minutes of that day's wall
// clock (0 to 1440), so an event crossing midnight shows on both days.
struct ScheduleDay {
    QString date;
    QString label;
    bool today = false;
    QVariantList events;

    friend bool operator==(const ScheduleDay &, const ScheduleDay &) = default;
};
