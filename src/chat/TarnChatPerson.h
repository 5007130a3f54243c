#pragma once

#include <QString>

class TarnJSONObject;

// A member of the team, offered when creating rooms and inviting to meetings
// (only while `active`).
struct TarnChatPerson {
    QString id; // user id
    QString name;
    bool active = false;

    static TarnChatPerson fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnChatPerson &, const TarnChatPerson &) = default;
};
