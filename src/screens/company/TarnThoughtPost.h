#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// An idea on the thought board. `read` is the reader's own mark; `decision`
// ("adopt", "later" or "decline") is the owner's, absent while it waits.
struct TarnThoughtPost {
    QString id;
    QString title;
    QString body;
    QString author_name;
    QString created_at;
    bool read = false;
    std::optional<QString> decision {};
    std::optional<QString> decided_by_name {};
    qint64 version = 0;

    static TarnThoughtPost fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnThoughtPost &, const TarnThoughtPost &) = default;
};
