#pragma once

#include <QString>

class TarnJSONObject;

// One emoji under a message: how many reacted with it, and whether the
// signed-in person is among them (which decides what choosing it again does).
struct TarnReaction {
    QString emoji;
    qint64 count = 0;
    bool mine = false;

    static TarnReaction fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnReaction &, const TarnReaction &) = default;
};
