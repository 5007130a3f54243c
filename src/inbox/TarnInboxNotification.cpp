#include "inbox/TarnInboxNotification.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxNotification TarnInboxNotification::fromJSON(const TarnJSONObject &json)
{
    return { .entry_id = json.string("entry_id"_L1),
        .thread_id = json.string("thread_id"_L1),
        .reason = json.string("reason"_L1),
        .body = json.string("body"_L1),
        .client_name = json.optionalString("client_name"_L1) };
}
