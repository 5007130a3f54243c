#pragma once

#include <QString>

// How far a person is through their planned week.
struct WorkPlanProgress {
    QString id;
    QString name;
    QString role;
    int planned = 0;
    int done = 0;

    friend bool operator==(const WorkPlanProgress &, const WorkPlanProgress &) = default;
};
