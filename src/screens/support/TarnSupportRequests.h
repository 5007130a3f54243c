#pragma once

#include "screens/support/TarnSupportFilters.h"

#include <QJsonObject>
#include <QString>

// The bodies of the support calls other than a task's change.

// A new task; empty texts are left for the service's defaults.
struct TarnSupportTaskDraft {
    QString title {};
    QString priority = QStringLiteral("normal");
    QString client_id {};
    QString assignee_id {};
    QString due_date {};
    QString description {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("title"), title }, { QStringLiteral("priority"), priority },
            { QStringLiteral("client_id"), client_id }, { QStringLiteral("assignee_id"), assignee_id },
            { QStringLiteral("due_date"), due_date }, { QStringLiteral("description"), description } };
    }
};

// A subtask's title.
struct TarnSupportSubtaskDraft {
    QString title {};
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("title"), title } }; }
};

// A comment on a task or a note on a customer.
struct TarnSupportNoteDraft {
    QString body {};
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("body"), body } }; }
};

// A file for a task: its name and its bytes in base64.
struct TarnSupportUpload {
    QString name {};
    QString data {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("name"), name }, { QStringLiteral("data"), data } };
    }
};

// "start" or "stop" the person's timer on a task.
struct TarnSupportTimerAction {
    QString action {};
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("action"), action } }; }
};

// Time spent on a day, logged by hand.
struct TarnSupportTimeLog {
    qint64 minutes = 0;
    QString day {};
    QString note {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("minutes"), minutes }, { QStringLiteral("day"), day },
            { QStringLiteral("note"), note } };
    }
};

// A recurring rule and the day its first task is due.
struct TarnSupportRecurringDraft {
    QString title {};
    QString every {};
    QString first_due {};
    QString client_id {};
    QString assignee_id {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("title"), title }, { QStringLiteral("every"), every },
            { QStringLiteral("first_due"), first_due }, { QStringLiteral("client_id"), client_id },
            { QStringLiteral("assignee_id"), assignee_id } };
    }
};

// A view saved under a name.
struct TarnSupportViewDraft {
    QString name {};
    TarnSupportFilters filters {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("name"), name }, { QStringLiteral("filters"), filters.toJSON() } };
    }
};

// A saved view's new name.
struct TarnSupportViewName {
    QString name {};
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("name"), name } }; }
};
