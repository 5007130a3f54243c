#include "screens/support/TarnSupportRunningTimer.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportRunningTimer TarnSupportRunningTimer::fromJSON(const TarnJSONObject &json)
{
    return { .person_id = json.string("person_id"_L1),
        .person_name = json.string("person_name"_L1),
        .started_at = json.string("started_at"_L1) };
}
