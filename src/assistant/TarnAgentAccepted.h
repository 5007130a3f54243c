#pragma once

#include <QString>

class TarnJSONObject;

// The answer of asking the agent: the stored request's id (the first
// request's id again when its key was sent before).
struct TarnAgentAccepted {
    QString id;

    static TarnAgentAccepted fromJSON(const TarnJSONObject &json);
};
