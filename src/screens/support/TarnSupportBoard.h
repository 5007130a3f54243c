#pragma once

#include "screens/support/TarnSupportNamed.h"
#include "screens/support/TarnSupportRecurring.h"
#include "screens/support/TarnSupportSavedView.h"
#include "screens/support/TarnSupportTaskSummary.h"
#include "screens/support/TarnSupportTimeEntry.h"
#include "screens/support/TarnSupportTimer.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// The board as one read: the open tasks and those done in the last month
// (subtasks are read with their task), whom and what they can name, the
// person's saved views, the recurring rules, the person's running timer and
// the last month's logged time.
struct TarnSupportBoard {
    QList<TarnSupportTaskSummary> tasks {};
    QList<TarnSupportNamed> people {};
    QList<TarnSupportNamed> clients {};
    QList<TarnSupportSavedView> views {};
    QList<TarnSupportRecurring> recurring {};
    std::optional<TarnSupportTimer> timer {};
    QList<TarnSupportTimeEntry> time_entries {};

    static TarnSupportBoard fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportBoard &, const TarnSupportBoard &) = default;
};
