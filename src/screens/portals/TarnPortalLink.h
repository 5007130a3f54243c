#pragma once

#include <QString>

class TarnJSONObject;

// A one-time sign-in link for a portal person, valid until `expires_at`.
struct TarnPortalLink {
    QString url;
    QString expires_at;

    static TarnPortalLink fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalLink &, const TarnPortalLink &) = default;
};
