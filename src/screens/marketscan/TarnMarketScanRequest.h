#pragma once

#include <QJsonObject>
#include <QString>

// What to scan: a trade ("dentists") in an area ("Portland, OR").
struct TarnMarketScanRequest {
    QString trade;
    QString area;

    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("trade"), trade }, { QStringLiteral("area"), area } };
    }
};
