#pragma once

#include <QString>

class TarnJSONObject;

// One person in a huddle, on one connection, with their marks.
struct TarnHuddleParticipant {
    QString user_id;
    QString name;
    QString conn;
    bool muted = false;
    bool video = false;
    bool screen = false;

    static TarnHuddleParticipant fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnHuddleParticipant &, const TarnHuddleParticipant &) = default;
};
