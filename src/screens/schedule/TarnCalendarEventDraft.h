#pragma once

#include <QJsonObject>
#include <QString>

// A new event for the Google calendar: its title, UTC instants (ISO 8601)
// and an optional location (empty for none).
struct TarnCalendarEventDraft {
    QString title;
    QString start_at;
    QString end_at;
    QString location;

    [[nodiscard]] QJsonObject toJSON() const
    {
        QJsonObject json { { QStringLiteral("title"), title }, { QStringLiteral("start_at"), start_at },
            { QStringLiteral("end_at"), end_at } };
        if (!location.isEmpty())
            json.insert(QStringLiteral("location"), location);
        return json;
    }
};
