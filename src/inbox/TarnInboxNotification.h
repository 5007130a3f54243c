#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// An inbox event the signed-in person has not dismissed yet.
struct TarnInboxNotification {
    QString entry_id;
    QString thread_id;
    QString reason;
    QString body;
    std::optional<QString> client_name {};

    static TarnInboxNotification fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxNotification &, const TarnInboxNotification &) = default;
};
