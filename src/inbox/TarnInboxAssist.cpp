#include "inbox/TarnInboxAssist.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxAssist TarnInboxAssist::fromJSON(const TarnJSONObject &json)
{
    return { .draft = json.string("draft"_L1) };
}
