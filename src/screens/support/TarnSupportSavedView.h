#pragma once

#include "screens/support/TarnSupportFilters.h"

#include <QString>

class TarnJSONObject;

// One of the person's saved views: a name over a set of filters.
struct TarnSupportSavedView {
    QString id;
    QString name;
    TarnSupportFilters filters {};

    static TarnSupportSavedView fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportSavedView &, const TarnSupportSavedView &) = default;
};
