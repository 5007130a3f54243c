#pragma once

#include "chat/huddle/TarnHuddleCandidate.h"
#include "chat/huddle/TarnHuddleDescription.h"

#include <QJsonObject>
#include <QList>

#include <optional>

class TarnJSONObject;

// What a signal carries: a description for "offer" and "answer", a batch of
// candidates for "ice".
struct TarnHuddleSignalData {
    std::optional<TarnHuddleDescription> description {};
    std::optional<QList<TarnHuddleCandidate>> candidates {};

    static TarnHuddleSignalData fromJSON(const TarnJSONObject &json);
    [[nodiscard]] QJsonObject toJSON() const;

    friend bool operator==(const TarnHuddleSignalData &, const TarnHuddleSignalData &) = default;
};
