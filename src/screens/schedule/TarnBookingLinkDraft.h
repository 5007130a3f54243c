#pragma once

#include <QJsonObject>
#include <QString>

// A new booking link: its title and the length of a booking in minutes.
struct TarnBookingLinkDraft {
    QString title;
    qint64 duration = 30;

    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("title"), title }, { QStringLiteral("duration"), duration } };
    }
};
