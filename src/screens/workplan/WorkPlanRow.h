#pragma once

#include "screens/workplan/TarnWorkEntry.h"

#include <QString>

// An entry as the plan's list shows it: with the name of whose it is.
struct WorkPlanRow {
    QString id;
    QString person_name;
    TarnWorkEntry entry;

    friend bool operator==(const WorkPlanRow &, const WorkPlanRow &) = default;
};
