#pragma once

#include <QString>

class TarnJSONObject;

// Whether the person's mailbox is connected, and what it may do.
struct TarnMailStatus {
    bool configured = false;
    QString email;
    bool gmail = false;
    bool organize = false;
    bool calendar = false;
    bool sending = false;

    static TarnMailStatus fromJSON(const TarnJSONObject &json);
};
