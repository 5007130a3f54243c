#pragma once

#include <QString>

class TarnJSONObject;

// A send the service holds until sendsAtMs, so that it can still be undone.
struct TarnMailQueued {
    bool queued = false;
    QString sendId;
    qint64 sendsAtMs = 0;

    static TarnMailQueued fromJSON(const TarnJSONObject &json);
};
