#include "mail/TarnMailLabels.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailLabels TarnMailLabels::fromJSON(const TarnJSONObject &json)
{
    return { .labels = json.list<TarnMailLabel>("labels"_L1) };
}
