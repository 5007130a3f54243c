#pragma once

#include <QString>

class TarnJSONObject;

// One month of a client's figures ("YYYY-MM"); `revenue` in cents.
struct TarnPerformanceMonth {
    QString month;
    qint64 visits = 0;
    qint64 leads = 0;
    qint64 calls = 0;
    qint64 revenue = 0;

    static TarnPerformanceMonth fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPerformanceMonth &, const TarnPerformanceMonth &) = default;
};
