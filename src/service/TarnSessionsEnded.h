#pragma once

#include <QtGlobal>

class TarnJSONObject;

// The answer of ending the person's other sessions.
struct TarnSessionsEnded {
    bool ok = false;
    // How many sessions were ended.
    qint64 signed_out = 0;

    static TarnSessionsEnded fromJSON(const TarnJSONObject &json);
};
