#include "mail/TarnMailQueued.h"

#include "mail/TarnMailMillis.h"
#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailQueued TarnMailQueued::fromJSON(const TarnJSONObject &json)
{
    return { .queued = json.boolean("queued"_L1),
        .sendId = json.string("sendId"_L1),
        .sendsAtMs = TarnMailMillis::read(json, "sendsAtMs"_L1) };
}
