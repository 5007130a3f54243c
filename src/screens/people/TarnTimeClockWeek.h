#pragma once

#include "screens/people/TarnTimeEntry.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// One person's time clock for the week beginning on Monday `week`
// ("YYYY-MM-DD"): every entry that touches the week, oldest first, and
// whether they are clocked in now.
struct TarnTimeClockWeek {
    QString person_id;
    QString person_name;
    QString week;
    bool clocked_in = false;
    QList<TarnTimeEntry> entries;

    static TarnTimeClockWeek fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTimeClockWeek &, const TarnTimeClockWeek &) = default;
};
