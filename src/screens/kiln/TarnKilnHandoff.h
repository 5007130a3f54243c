#pragma once

#include <QString>

class TarnJSONObject;

// A one-time hand-off into the web workspace: `url` signs the person in with
// its `code` once, until `expires_at`.
struct TarnKilnHandoff {
    QString code;
    QString url;
    QString expires_at;

    static TarnKilnHandoff fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnKilnHandoff &, const TarnKilnHandoff &) = default;
};
