#include "mail/TarnMailSection.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailSection TarnMailSection::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1), .title = json.string("title"_L1), .threads = json.list<TarnMailCard>("threads"_L1)
    };
}
