#include "screens/customers/TarnTimelineEvent.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTimelineEvent TarnTimelineEvent::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .kind = json.string("kind"_L1),
        .at = json.string("at"_L1),
        .title = json.string("title"_L1),
        .body = json.string("body"_L1),
        .author_name = json.optionalString("author_name"_L1) };
}
