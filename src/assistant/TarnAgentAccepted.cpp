#include "assistant/TarnAgentAccepted.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnAgentAccepted TarnAgentAccepted::fromJSON(const TarnJSONObject &json)
{
    return { json.string("id"_L1) };
}
