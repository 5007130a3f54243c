#pragma once

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// A STUN or TURN server the peer connections of a huddle may use.
struct TarnHuddleIceServer {
    QList<QString> urls;
    std::optional<QString> username {};
    std::optional<QString> credential {};

    static TarnHuddleIceServer fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnHuddleIceServer &, const TarnHuddleIceServer &) = default;
};
