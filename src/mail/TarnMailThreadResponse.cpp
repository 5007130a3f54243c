#include "mail/TarnMailThreadResponse.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailThreadResponse TarnMailThreadResponse::fromJSON(const TarnJSONObject &json)
{
    return { .thread = json.get<TarnMailThread>("thread"_L1) };
}
