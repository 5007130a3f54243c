#include "mail/TarnMailMessage.h"

#include "mail/TarnMailMillis.h"
#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailMessage TarnMailMessage::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .from = json.get<TarnMailPerson>("from"_L1),
        .to = json.optionalList<TarnMailPerson>("to"_L1).value_or(QList<TarnMailPerson>()),
        .cc = json.optionalList<TarnMailPerson>("cc"_L1),
        .date = TarnMailMillis::read(json, "date"_L1),
        .text = json.optionalString("text"_L1).value_or(QString()),
        .html = json.optionalString("html"_L1),
        .unread = json.optionalBoolean("unread"_L1).value_or(false),
        .snippet = json.optionalString("snippet"_L1).value_or(QString()),
        .attachments = json.optionalList<TarnMailAttachment>("attachments"_L1).value_or(QList<TarnMailAttachment>()) };
}
