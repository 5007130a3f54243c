#include "service/TarnCreatedID.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCreatedID TarnCreatedID::fromJSON(const TarnJSONObject &json)
{
    return { json.string("id"_L1) };
}
