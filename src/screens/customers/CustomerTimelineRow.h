#pragma once

#include <QString>

// One drawn row of a customer's timeline: the event with its labels, and
// whether it opens a day (so the row draws the day's header above itself).
struct CustomerTimelineRow {
    QString id;
    QString kind;
    QString kindLabel;
    QString title;
    QString body;
    QString author;
    QString timeLabel;
    QString dayLabel;
    bool firstOfDay = false;

    friend bool operator==(const CustomerTimelineRow &, const CustomerTimelineRow &) = default;
};
