#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

// The body of creating a room: a direct message names the other person, a
// channel its name, privacy and members. Only the keys of the kind are sent.
struct TarnRoomCreate {
    QString kind; // "dm" or "channel"
    std::optional<QString> user_id {};
    std::optional<QString> name {};
    std::optional<bool> private_ {}; // the JSON key "private"
    std::optional<QList<QString>> members {};

    [[nodiscard]] QJsonObject toJSON() const;
};
