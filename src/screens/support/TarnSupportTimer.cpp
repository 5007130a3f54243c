#include "screens/support/TarnSupportTimer.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportTimer TarnSupportTimer::fromJSON(const TarnJSONObject &json)
{
    return { .task_id = json.string("task_id"_L1),
        .task_title = json.string("task_title"_L1),
        .started_at = json.string("started_at"_L1) };
}
