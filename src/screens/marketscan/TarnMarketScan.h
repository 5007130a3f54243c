#pragma once

#include "screens/marketscan/TarnMarketBusiness.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// A scan of one trade in one area: when it ran and what it found. The list
// of recent scans leaves `businesses` empty and counts them in `found` and
// `high` (those of high opportunity).
struct TarnMarketScan {
    QString id;
    QString trade;
    QString area;
    QString scanned_at;
    qint64 found = 0;
    qint64 high = 0;
    QList<TarnMarketBusiness> businesses {};

    static TarnMarketScan fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMarketScan &, const TarnMarketScan &) = default;
};
