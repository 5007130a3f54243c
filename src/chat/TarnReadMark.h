#pragma once

#include <QJsonObject>

// The body of marking a room read up to the highest sequence number seen.
struct TarnReadMark {
    qint64 seq = 0;

    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("seq"), seq } }; }
};
