#include "chat/TarnGifSearch.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnGifSearch TarnGifSearch::fromJSON(const TarnJSONObject &json)
{
    return { .configured = json.boolean("configured"_L1),
        .results = json.list<TarnGif>("results"_L1),
        .message = json.optionalString("message"_L1) };
}
