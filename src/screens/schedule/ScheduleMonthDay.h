#pragma once

#include <QString>
#include <QStringList>

// One day of the month grid: its date ("yyyy-MM-dd", the key), its number,
// whether it belongs to the month shown (the grid's first and last weeks
// reach into the months beside it) or is today, how many events touch it and
// the titles of the first of them.
struct ScheduleMonthDay {
    QString date;
    QString weekday; // "Mon"
    int number = 0;
    bool inMonth = false;
    bool today = false;
    int count = 0;
    QStringList titles;

    friend bool operator==(const ScheduleMonthDay &, const ScheduleMonthDay &) = default;
};
