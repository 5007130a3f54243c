#pragma once

#include "screens/support/TarnSupportComment.h"
#include "screens/support/TarnSupportFile.h"
#include "screens/support/TarnSupportRunningTimer.h"
#include "screens/support/TarnSupportTaskSummary.h"
#include "screens/support/TarnSupportTimeEntry.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// A task opened: its card, description, subtasks, comments, files, logged
// time and whoever has a timer running on it.
struct TarnSupportTask {
    TarnSupportTaskSummary task {};
    QString description;
    QList<TarnSupportTaskSummary> subtasks {};
    QList<TarnSupportComment> comments {};
    QList<TarnSupportFile> files {};
    QList<TarnSupportTimeEntry> time_entries {};
    QList<TarnSupportRunningTimer> running_timers {};

    static TarnSupportTask fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportTask &, const TarnSupportTask &) = default;
};
