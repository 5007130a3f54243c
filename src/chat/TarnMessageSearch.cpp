#include "chat/TarnMessageSearch.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMessageSearch TarnMessageSearch::fromJSON(const TarnJSONObject &json)
{
    return { .results = json.list<TarnMessageSearchHit>("results"_L1) };
}
