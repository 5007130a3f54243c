#include "inbox/TarnInboxCreated.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxCreated TarnInboxCreated::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1) };
}
