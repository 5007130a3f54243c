#pragma once

#include "chat/huddle/TarnHuddleParticipant.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// A room's huddle as one person sees it. An inactive state carries only
// `active` (and, for someone who was in it, `joined` false).
struct TarnHuddleState {
    bool active = false;
    std::optional<QString> id {};
    std::optional<QString> room_id {};
    std::optional<QString> room_name {};
    std::optional<QString> started_by {};
    // Increases with every change, so a poll can ask for anything newer.
    std::optional<qint64> version {};
    std::optional<QList<TarnHuddleParticipant>> participants {};
    std::optional<bool> joined {};
    std::optional<bool> ringing {};

    static TarnHuddleState fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnHuddleState &, const TarnHuddleState &) = default;
};
