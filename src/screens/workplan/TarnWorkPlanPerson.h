#pragma once

#include "screens/workplan/TarnCoachNote.h"
#include "screens/workplan/TarnWorkEntry.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// A person's week in the plan. `coach_notes` is empty for anyone but the
// person themself and those who coach.
struct TarnWorkPlanPerson {
    QString id;
    QString name;
    QString role;
    QList<TarnWorkEntry> entries;
    QList<TarnCoachNote> coach_notes;

    static TarnWorkPlanPerson fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnWorkPlanPerson &, const TarnWorkPlanPerson &) = default;
};
