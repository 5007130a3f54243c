#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One piece of planned work on a person's day. `kind` is "customer",
// "support", "call", "admin" or "reminder"; only admin tasks are edited, so
// `version` guards them against a change made meanwhile. `time` ("HH:mm")
// is a reminder's.
struct TarnWorkEntry {
    QString id;
    QString person_id;
    QString kind;
    QString title;
    QString day;
    std::optional<QString> time {};
    std::optional<QString> client_id {};
    std::optional<QString> client_name {};
    QString notes;
    bool done = false;
    std::optional<QString> done_by_name {};
    qint64 version = 0;

    static TarnWorkEntry fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnWorkEntry &, const TarnWorkEntry &) = default;
};
