#pragma once

#include <QString>

class TarnJSONObject;

// The assistant's suggested reply, for the person to edit before sending.
struct TarnInboxAssist {
    QString draft;

    static TarnInboxAssist fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxAssist &, const TarnInboxAssist &) = default;
};
