#include "service/TarnErrorBody.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnErrorBody TarnErrorBody::fromJSON(const TarnJSONObject &json)
{
    return {json.optionalString("error"_L1)};
}
