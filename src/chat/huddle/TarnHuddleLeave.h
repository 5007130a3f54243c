#pragma once

#include <QJsonObject>
#include <QString>

// The body of leaving a huddle: the session that leaves.
struct TarnHuddleLeave {
    QString sid;

    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("sid"), sid } }; }
};
