#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

class TarnJSONObject;

// One ICE candidate, travelling both ways in "ice" signals.
struct TarnHuddleCandidate {
    QString candidate;
    std::optional<QString> sdpMid {};
    qint64 sdpMLineIndex = 0;

    static TarnHuddleCandidate fromJSON(const TarnJSONObject &json);
    [[nodiscard]] QJsonObject toJSON() const;

    friend bool operator==(const TarnHuddleCandidate &, const TarnHuddleCandidate &) = default;
};
