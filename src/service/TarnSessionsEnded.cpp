#include "service/TarnSessionsEnded.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSessionsEnded TarnSessionsEnded::fromJSON(const TarnJSONObject &json)
{
    return { .ok = json.boolean("ok"_L1), .signed_out = json.integer("signed_out"_L1) };
}
