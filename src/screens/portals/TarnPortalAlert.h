#pragma once

#include <QString>

class TarnJSONObject;

// Something on a client's portal that wants a look: `kind` is "key", "report",
// "performance" or "person".
struct TarnPortalAlert {
    QString id;
    QString client_id;
    QString client_name;
    QString kind;
    QString text;
    QString created_at;

    static TarnPortalAlert fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalAlert &, const TarnPortalAlert &) = default;
};
