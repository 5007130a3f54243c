#include "mail/TarnMailThread.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailThread TarnMailThread::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .subject = json.string("subject"_L1),
        .messages = json.list<TarnMailMessage>("messages"_L1),
        .readOnly = json.optionalBoolean("readOnly"_L1).value_or(false) };
}
