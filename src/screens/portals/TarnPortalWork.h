#pragma once

#include <QString>

class TarnJSONObject;

// A piece of work shown on a client's portal; `status` is "planned", "in-progress"
// or "delivered".
struct TarnPortalWork {
    QString id;
    QString title;
    QString status;
    QString updated_at;

    static TarnPortalWork fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalWork &, const TarnPortalWork &) = default;
};
