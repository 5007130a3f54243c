#pragma once

#include "screens/workplan/TarnWorkPlanPerson.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// The team's planned week: `week` is its Monday ("YYYY-MM-DD"), `people` in
// the team's order; `may_coach` says whether the asker adds coaching notes.
struct TarnWorkPlan {
    QString week;
    bool may_coach = false;
    QList<TarnWorkPlanPerson> people;

    static TarnWorkPlan fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnWorkPlan &, const TarnWorkPlan &) = default;
};
