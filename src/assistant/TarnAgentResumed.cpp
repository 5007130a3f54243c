#include "assistant/TarnAgentResumed.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnAgentResumed TarnAgentResumed::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1), .status = json.string("status"_L1) };
}
