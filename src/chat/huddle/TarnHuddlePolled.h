#pragma once

#include "chat/huddle/TarnHuddleSignal.h"
#include "chat/huddle/TarnHuddleState.h"

#include <QList>

class TarnJSONObject;

// The answer to a poll: the signals for this connection and the state.
struct TarnHuddlePolled {
    bool joined = false; // false once this client is no longer in the huddle
    QList<TarnHuddleSignal> signals_ {};
    TarnHuddleState state;

    static TarnHuddlePolled fromJSON(const TarnJSONObject &json);
};
