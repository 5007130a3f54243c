#pragma once

#include "chat/TarnMessageSearchHit.h"

#include <QList>

class TarnJSONObject;

// The answer of the search across rooms.
struct TarnMessageSearch {
    QList<TarnMessageSearchHit> results;

    static TarnMessageSearch fromJSON(const TarnJSONObject &json);
};
