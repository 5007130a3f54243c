#pragma once

#include <QString>

class TarnJSONObject;

// A key as it is issued: the whole `key` is in this answer alone; afterwards only
// its `tail` is shown.
struct TarnPortalKey {
    QString key;
    QString tail;

    static TarnPortalKey fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalKey &, const TarnPortalKey &) = default;
};
