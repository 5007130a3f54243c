#pragma once

#include "chat/huddle/TarnHuddleIceServer.h"
#include "chat/huddle/TarnHuddleState.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// The answer to joining: this client's session and connection in the huddle.
struct TarnHuddleJoined {
    QString sid;
    QString conn;
    TarnHuddleState state;
    QList<TarnHuddleIceServer> ice_servers {};

    static TarnHuddleJoined fromJSON(const TarnJSONObject &json);
};
