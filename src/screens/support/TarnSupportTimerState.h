#pragma once

#include "screens/support/TarnSupportTimeEntry.h"
#include "screens/support/TarnSupportTimer.h"

#include <QString>

#include <optional>

class TarnJSONObject;

// The answer of starting or stopping a timer: the person's timer now, and the
// time a stopped one logged.
struct TarnSupportTimerState {
    std::optional<TarnSupportTimer> timer {};
    std::optional<TarnSupportTimeEntry> logged {};

    static TarnSupportTimerState fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportTimerState &, const TarnSupportTimerState &) = default;
};
