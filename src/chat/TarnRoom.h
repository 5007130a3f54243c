#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One entry of the room list: a channel, or a direct message named after
// the other person.
struct TarnRoom {
    QString id;
    QString name;
    QString kind; // "channel" or "dm"
    qint64 unread = 0;
    std::optional<qint64> list_rank {};
    std::optional<bool> listed {};

    static TarnRoom fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnRoom &, const TarnRoom &) = default;
};
