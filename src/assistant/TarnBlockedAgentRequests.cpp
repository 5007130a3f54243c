#include "assistant/TarnBlockedAgentRequests.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBlockedAgentRequests TarnBlockedAgentRequests::fromJSON(const TarnJSONObject &json)
{
    return { json.list<TarnAgentRequest>("requests"_L1) };
}
