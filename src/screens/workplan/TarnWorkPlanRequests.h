#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>

// The bodies of the work plan's changes.

// Ticks an entry off, or back on.
struct TarnWorkEntryCompletion {
    bool done = true;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("done"), done } }; }
};

struct TarnAdminTaskDraft {
    QString person_id;
    QString title;
    QString day;
    QString notes;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("person_id"), person_id }, { QStringLiteral("title"), title },
            { QStringLiteral("day"), day }, { QStringLiteral("notes"), notes } };
    }
};

// An admin task's new title, day and notes, based on the `version` shown.
struct TarnAdminTaskUpdate {
    QString title;
    QString day;
    QString notes;
    qint64 version = 0;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("title"), title }, { QStringLiteral("day"), day }, { QStringLiteral("notes"), notes },
            { QStringLiteral("version"), version } };
    }
};

// `time` ("HH:mm") left out: some time that day.
struct TarnReminderDraft {
    QString person_id;
    QString title;
    QString day;
    std::optional<QString> time {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("person_id"), person_id }, { QStringLiteral("title"), title },
            { QStringLiteral("day"), day }, { QStringLiteral("time"), time ? QJsonValue(*time) : QJsonValue() } };
    }
};

// A note on the person's week that starts on `week`.
struct TarnCoachNoteDraft {
    QString week;
    QString body;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("week"), week }, { QStringLiteral("body"), body } };
    }
};
