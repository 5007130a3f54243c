#include "mail/TarnMailCancelled.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailCancelled TarnMailCancelled::fromJSON(const TarnJSONObject &json)
{
    return { .cancelled = json.boolean("cancelled"_L1) };
}
