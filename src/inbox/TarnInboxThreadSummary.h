#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One row of the inbox list. `preview_draft` marks a preview that is an
// unsent draft rather than the last message.
struct TarnInboxThreadSummary {
    QString id;
    QString kind;
    std::optional<QString> client_id {};
    QString customer_address;
    std::optional<QString> owner_name {};
    std::optional<QString> client_name {};
    QString preview;
    bool preview_draft = false;
    QString last_message_at;
    bool unreplied = false;
    std::optional<QString> updated_at {};

    static TarnInboxThreadSummary fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxThreadSummary &, const TarnInboxThreadSummary &) = default;
};
