#pragma once

#include "assistant/TarnAgentRequest.h"

#include <QList>

// The answer of loading the person's conversation with the agent.
struct TarnAgentConversation {
    // The agent is set up for this workspace.
    bool configured = false;
    // The agent is connected now.
    bool online = false;
    QList<TarnAgentRequest> requests;

    static TarnAgentConversation fromJSON(const TarnJSONObject &json);
    bool operator==(const TarnAgentConversation &) const = default;
};
