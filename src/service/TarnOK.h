#pragma once

#include <QString>

class TarnJSONObject;

// The answer of endpoints that return nothing else.
struct TarnOK {
    bool ok = false;
    static TarnOK fromJSON(const TarnJSONObject &json);
};
