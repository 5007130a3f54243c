#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A message found by the search across rooms; `parent_id` is set for a hit
// inside a thread, which opens that thread.
struct TarnMessageSearchHit {
    QString id;
    QString room_id;
    std::optional<QString> parent_id {};
    QString body;
    QString author;
    QString room_name;
    QString created_at;

    static TarnMessageSearchHit fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMessageSearchHit &, const TarnMessageSearchHit &) = default;
};
