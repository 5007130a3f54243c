#pragma once

#include "screens/customers/TarnTimelineEvent.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// A page of a customer's timeline, newest first; `next_before` asks for the page after it.
struct TarnTimelinePage {
    QList<TarnTimelineEvent> events;
    std::optional<QString> next_before {};

    static TarnTimelinePage fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTimelinePage &, const TarnTimelinePage &) = default;
};
