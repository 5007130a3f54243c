#include "assistant/TarnAgentConversation.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnAgentConversation TarnAgentConversation::fromJSON(const TarnJSONObject &json)
{
    return { .configured = json.boolean("configured"_L1),
        .online = json.boolean("online"_L1),
        .requests = json.list<TarnAgentRequest>("requests"_L1) };
}
