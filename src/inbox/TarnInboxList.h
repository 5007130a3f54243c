#pragma once

#include "inbox/TarnInboxThreadSummary.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// The inbox list for one scope, view and kind. `unreplied_count` counts
// every thread waiting for a reply, whatever the filters.
struct TarnInboxList {
    QList<TarnInboxThreadSummary> threads {};
    qint64 unreplied_count = 0;

    static TarnInboxList fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxList &, const TarnInboxList &) = default;
};
