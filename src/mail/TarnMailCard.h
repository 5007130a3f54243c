#pragma once

#include "mail/TarnMailPerson.h"

#include <QString>

class TarnJSONObject;

// One thread in a list.
struct TarnMailCard {
    QString id;
    TarnMailPerson from;
    QString subject;
    QString snippet;
    qint64 lastMs = 0; // the newest message
    int count = 0; // messages in the thread
    bool unread = false;
    bool starred = false;
    bool pinned = false;
    bool hasAttachments = false;
    QString category;

    static TarnMailCard fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMailCard &, const TarnMailCard &) = default;
};
