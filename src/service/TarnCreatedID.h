#pragma once

#include <QString>

class TarnJSONObject;

// The answer of endpoints that create one thing.
struct TarnCreatedID {
    QString id;
    static TarnCreatedID fromJSON(const TarnJSONObject &json);
};
