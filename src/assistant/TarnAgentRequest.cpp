#include "assistant/TarnAgentRequest.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnAgentRequest TarnAgentRequest::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .content = json.string("content"_L1),
        .status = json.string("status"_L1),
        .reply = json.optionalString("reply"_L1),
        .created_at = json.string("created_at"_L1),
        .origin = json.optionalString("origin"_L1),
        .page = json.optionalString("page"_L1),
        .title = json.optionalString("title"_L1) };
}
