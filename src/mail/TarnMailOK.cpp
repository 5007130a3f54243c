#include "mail/TarnMailOK.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailOK TarnMailOK::fromJSON(const TarnJSONObject &json)
{
    return { .ok = json.optionalBoolean("ok"_L1) };
}
