#pragma once

#include "chat/TarnMessage.h"

#include <QList>

class TarnJSONObject;

// One page of a room's timeline or of a thread, oldest message first.
struct TarnMessagePage {
    QList<TarnMessage> messages;
    // The highest sequence number in the room, read or not.
    qint64 last_seq = 0;
    // Older messages exist before the first one here.
    bool has_more = false;

    static TarnMessagePage fromJSON(const TarnJSONObject &json);
};
