#include "screens/support/NativeSupportCardModel.h"

#include "screens/support/SupportLabels.h"

#include <QStringList>

using Row = SupportCard;

NativeSupportCardModel::NativeSupportCardModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "taskId", [](const Row &r) { return r.task.id; } },
            { "title", [](const Row &r) { return r.task.title; } },
            { "status", [](const Row &r) { return r.task.status; } },
            { "priority", [](const Row &r) { return r.task.priority; } },
            { "priorityLabel", [](const Row &r) { return SupportLabels::priority(r.task.priority); } },
            { "client", [](const Row &r) { return r.task.client_name.value_or(QString()); } },
            { "clientId", [](const Row &r) { return r.task.client_id.value_or(QString()); } },
            { "assignee", [](const Row &r) { return r.task.assignee_name.value_or(QString()); } },
            { "people",
                [](const Row &r) {
                    QStringList parts;
                    if (r.task.client_name)
                        parts.append(*r.task.client_name);
                    if (r.task.assignee_name)
                        parts.append(*r.task.assignee_name);
                    return parts.join(QStringLiteral(" · "));
                } },
            { "due", [](const Row &r) { return r.dueLabel; } },
            { "overdue", [](const Row &r) { return r.overdue; } },
            { "subtasks",
                [](const Row &r) {
                    return r.task.subtask_count == 0
                        ? QString()
                        : QStringLiteral("%1/%2").arg(r.task.subtasks_done).arg(r.task.subtask_count);
                } },
            { "comments", [](const Row &r) { return r.task.comment_count; } },
            { "logged",
                [](const Row &r) {
                    return r.task.logged_minutes == 0 ? QString() : SupportLabels::minutes(r.task.logged_minutes);
                } },
            { "recurring", [](const Row &r) { return r.task.recurring_id.has_value(); } },
            { "timing", [](const Row &r) { return r.timing; } },
        },
        parent)
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &NativeSupportCardModel::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &NativeSupportCardModel::countChanged);
}
