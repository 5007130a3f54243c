#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A client's website the company runs. `status` is "live", "building" or
// "paused"; `uptime` the last 30 days' in hundredths of a percent (9987 is
// 99.87 %); `score` the last site check's overall score, 0 to 100.
struct TarnWebsite {
    QString id;
    QString domain;
    QString client_name;
    QString status;
    std::optional<QString> published_at {};
    qint64 uptime = 0;
    qint64 visits = 0;
    qint64 form_entries = 0;
    std::optional<qint64> score {};

    static TarnWebsite fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnWebsite &, const TarnWebsite &) = default;
};
