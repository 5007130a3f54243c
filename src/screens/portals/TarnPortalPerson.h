#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// Someone at the client who may sign in to its portal.
struct TarnPortalPerson {
    QString id;
    QString name;
    QString email;
    QString invited_at;
    std::optional<QString> last_seen_at {};

    static TarnPortalPerson fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalPerson &, const TarnPortalPerson &) = default;
};
