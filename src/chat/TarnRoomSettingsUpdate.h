#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

// The body of saving a room's settings: all of them at once.
struct TarnRoomSettingsUpdate {
    QString name;
    bool private_ = false; // the JSON key "private"
    bool archived = false;
    QList<QString> members;

    [[nodiscard]] QJsonObject toJSON() const;
};
