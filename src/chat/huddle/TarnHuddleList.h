#pragma once

#include "chat/huddle/TarnHuddleState.h"

#include <QList>

class TarnJSONObject;

// The huddles running in rooms the person can see.
struct TarnHuddleList {
    QList<TarnHuddleState> huddles;

    static TarnHuddleList fromJSON(const TarnJSONObject &json);
};
