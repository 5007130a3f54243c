#pragma once

#include <QList>
#include <QString>

class TarnJSONObject;

// A room's editable settings, as the settings sheet loads them.
struct TarnRoomSettings {
    QString id;
    QString name;
    QString kind;
    QString created_by; // user id
    // The JSON key "private"; the one field whose key is a C++ keyword.
    bool private_ = false;
    bool archived = false;
    QList<QString> members; // user ids

    static TarnRoomSettings fromJSON(const TarnJSONObject &json);
};
