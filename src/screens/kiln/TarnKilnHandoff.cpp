#include "screens/kiln/TarnKilnHandoff.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnKilnHandoff TarnKilnHandoff::fromJSON(const TarnJSONObject &json)
{
    return { .code = json.string("code"_L1), .url = json.string("url"_L1), .expires_at = json.string("expires_at"_L1) };
}
