#include "screens/customers/TarnTimelinePage.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTimelinePage TarnTimelinePage::fromJSON(const TarnJSONObject &json)
{
    return { .events = json.list<TarnTimelineEvent>("events"_L1),
        .next_before = json.optionalString("next_before"_L1) };
}
