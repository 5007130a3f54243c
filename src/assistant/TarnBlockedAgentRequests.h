#pragma once

#include "assistant/TarnAgentRequest.h"

#include <QList>

// Everyone's blocked requests, for the reviewer.
struct TarnBlockedAgentRequests {
    QList<TarnAgentRequest> requests;

    static TarnBlockedAgentRequests fromJSON(const TarnJSONObject &json);
};
