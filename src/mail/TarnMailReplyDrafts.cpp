#include "mail/TarnMailReplyDrafts.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailReplyDrafts TarnMailReplyDrafts::fromJSON(const TarnJSONObject &json)
{
    return { .enabled = json.boolean("enabled"_L1),
        .drafts = json.optionalList<TarnMailReplyDraft>("drafts"_L1).value_or(QList<TarnMailReplyDraft>()) };
}
