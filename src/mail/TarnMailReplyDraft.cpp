#include "mail/TarnMailReplyDraft.h"

#include "mail/TarnMailMillis.h"
#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailReplyDraft TarnMailReplyDraft::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .threadId = json.string("threadId"_L1),
        .messageId = json.string("messageId"_L1),
        .from = json.get<TarnMailPerson>("from"_L1),
        .subject = json.string("subject"_L1),
        .preview = json.optionalString("preview"_L1).value_or(QString()),
        .draft = json.string("draft"_L1),
        .status = json.string("status"_L1),
        .createdMs = TarnMailMillis::read(json, "createdMs"_L1) };
}
