#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One request to the assistant's agent and its outcome.
struct TarnAgentRequest {
    QString id;
    // What the person asked.
    QString content;
    // "queued", "running", "blocked", "failed", or a finished status.
    QString status;
    std::optional<QString> reply {};
    // Service time, ISO 8601.
    QString created_at;
    // Where the request came from; "pilo" for the assistant's own.
    std::optional<QString> origin {};
    // The page the person was on (TarnShell::piloPage).
    std::optional<QString> page {};
    // A name the person gave it.
    std::optional<QString> title {};

    static TarnAgentRequest fromJSON(const TarnJSONObject &json);
    bool operator==(const TarnAgentRequest &) const = default;
};
