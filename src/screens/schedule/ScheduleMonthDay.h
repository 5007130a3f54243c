#pragma once

#include <QString>
#include <QVariantList>

// One day of the month grid: its date ("yyyy-MM-dd", the key), its number,
// whether it belongs to the month shown (the grid's first and last weeks
// reach into the months beside it) or is today, how many events touch it and
// the first of them, each a map of `title` and `calendar`.
struct ScheduleMonthDay {
    QString date;
    QString weekday; // "Mon"
    int number = 0;
    bool inMonth = false;
    bool today = false;
    int count = 0;
    QVariantList titles;

    friend bool operator==(const ScheduleMonthDay &, const ScheduleMonthDay &) = default;
};
