#include "service/TarnOK.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnOK TarnOK::fromJSON(const TarnJSONObject &json)
{
    return { json.boolean("ok"_L1) };
}
