#pragma once

#include <QString>

class TarnJSONObject;

// The answer of resuming blocked work: the request and its new status.
struct TarnAgentResumed {
    QString id;
    QString status;

    static TarnAgentResumed fromJSON(const TarnJSONObject &json);
};
