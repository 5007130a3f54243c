#pragma once

#include "screens/support/TarnSupportTaskSummary.h"

#include <QString>

// A card as a column shows it: the task and what is worked out for it once
// per filtering rather than per paint.
struct SupportCard {
    TarnSupportTaskSummary task;
    QString dueLabel;
    bool overdue = false;
    bool timing = false; // the person's timer runs on it

    friend bool operator==(const SupportCard &, const SupportCard &) = default;
};

// A card's key in its list: its task's id.
[[nodiscard]] inline const QString &supportCardKey(const SupportCard &card)
{
    return card.task.id;
}
