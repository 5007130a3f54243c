#include "mail/TarnMailCard.h"

#include "mail/TarnMailMillis.h"
#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailCard TarnMailCard::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .from = json.get<TarnMailPerson>("from"_L1),
        .subject = json.string("subject"_L1),
        .snippet = json.optionalString("snippet"_L1).value_or(QString()),
        .lastMs = TarnMailMillis::read(json, "lastMs"_L1),
        .count = json.get<int>("count"_L1),
        .unread = json.optionalBoolean("unread"_L1).value_or(false),
        .starred = json.optionalBoolean("starred"_L1).value_or(false),
        .pinned = json.optionalBoolean("pinned"_L1).value_or(false),
        .hasAttachments = json.optionalBoolean("hasAttachments"_L1).value_or(false),
        .category = json.optionalString("category"_L1).value_or(QString()) };
}
