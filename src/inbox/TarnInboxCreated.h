#pragma once

#include <QString>

class TarnJSONObject;

// The answer of starting a new conversation: the thread's id.
struct TarnInboxCreated {
    QString id;

    static TarnInboxCreated fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxCreated &, const TarnInboxCreated &) = default;
};
