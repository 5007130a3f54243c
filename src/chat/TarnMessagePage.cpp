#include "chat/TarnMessagePage.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMessagePage TarnMessagePage::fromJSON(const TarnJSONObject &json)
{
    return { .messages = json.list<TarnMessage>("messages"_L1),
        .last_seq = json.integer("last_seq"_L1),
        .has_more = json.boolean("has_more"_L1) };
}
