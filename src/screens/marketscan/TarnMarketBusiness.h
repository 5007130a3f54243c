#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class TarnJSONObject;

// A business a market scan found. `rating` is out of 5 (null without
// reviews); `site_score` 0 to 100 for how fast and sound its site is (null
// without a site); `opportunity` is "high", "medium" or "low" for how much
// the company could do for it, with the `reasons` in words.
struct TarnMarketBusiness {
    QString id;
    QString name;
    QString address;
    double distance_km = 0;
    std::optional<double> rating {};
    qint64 reviews = 0;
    std::optional<QString> website {};
    std::optional<qint64> site_score {};
    bool online_booking = false;
    bool texting = false;
    QString opportunity;
    QStringList reasons;

    static TarnMarketBusiness fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMarketBusiness &, const TarnMarketBusiness &) = default;
};
