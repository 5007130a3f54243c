#include "screens/support/TarnSupportNamed.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportNamed TarnSupportNamed::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1), .name = json.string("name"_L1) };
}
