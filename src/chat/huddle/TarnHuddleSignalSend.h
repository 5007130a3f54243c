#pragma once

#include "chat/huddle/TarnHuddleSignalData.h"

#include <QJsonObject>
#include <QString>

// The body of a signal to one other connection of the huddle.
struct TarnHuddleSignalSend {
    QString sid;
    QString to_conn;
    QString type; // "offer", "answer" or "ice"
    TarnHuddleSignalData data;

    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("sid"), sid }, { QStringLiteral("to_conn"), to_conn },
            { QStringLiteral("type"), type }, { QStringLiteral("data"), data.toJSON() } };
    }
};
