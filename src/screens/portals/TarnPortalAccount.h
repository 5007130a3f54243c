#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One client's portal as the dashboard lists it. `status` is "live", "paused" or
// "setup"; a key's `..._tail` is its last characters (the key itself is shown
// once, when issued); `version` grows with every change of the account.
struct TarnPortalAccount {
    QString client_id;
    QString client_name;
    QString status;
    QString welcome;
    std::optional<QString> lead_key_tail {};
    std::optional<QString> pilo_key_tail {};
    qint64 people_count = 0;
    qint64 open_alerts = 0;
    std::optional<QString> refreshed_at {};
    qint64 version = 0;

    static TarnPortalAccount fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalAccount &, const TarnPortalAccount &) = default;
};
