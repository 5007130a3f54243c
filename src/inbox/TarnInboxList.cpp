#include "inbox/TarnInboxList.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxList TarnInboxList::fromJSON(const TarnJSONObject &json)
{
    return { .threads = json.list<TarnInboxThreadSummary>("threads"_L1),
        .unreplied_count = json.integer("unreplied_count"_L1) };
}
