#pragma once

#include "chat/huddle/TarnHuddleSignalData.h"

#include <QString>

class TarnJSONObject;

// A signal relayed by the service from one connection to another.
struct TarnHuddleSignal {
    qint64 seq = 0; // increasing per huddle
    QString from;
    QString from_conn;
    QString type; // "offer", "answer" or "ice"
    TarnHuddleSignalData data;

    static TarnHuddleSignal fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnHuddleSignal &, const TarnHuddleSignal &) = default;
};
