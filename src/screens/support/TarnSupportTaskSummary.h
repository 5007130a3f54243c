#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One task as a card shows it. `status` is "todo", "in_progress", "waiting" or
// "done"; `priority` "low", "normal", "high" or "urgent"; `due_date` a day
// ("2026-03-31"). `version` goes back with every change made from it.
struct TarnSupportTaskSummary {
    QString id;
    QString title;
    QString status;
    QString priority;
    std::optional<QString> client_id {};
    std::optional<QString> client_name {};
    std::optional<QString> assignee_id {};
    std::optional<QString> assignee_name {};
    std::optional<QString> due_date {};
    std::optional<QString> recurring_id {};
    std::optional<QString> parent_id {};
    qint64 version = 0;
    QString updated_at;
    qint64 subtask_count = 0;
    qint64 subtasks_done = 0;
    qint64 comment_count = 0;
    qint64 logged_minutes = 0;

    static TarnSupportTaskSummary fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportTaskSummary &, const TarnSupportTaskSummary &) = default;
};
