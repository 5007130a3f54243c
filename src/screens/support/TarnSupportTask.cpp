#include "screens/support/TarnSupportTask.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportTask TarnSupportTask::fromJSON(const TarnJSONObject &json)
{
    return { .task = json.get<TarnSupportTaskSummary>("task"_L1),
        .description = json.string("description"_L1),
        .subtasks = json.list<TarnSupportTaskSummary>("subtasks"_L1),
        .comments = json.list<TarnSupportComment>("comments"_L1),
        .files = json.list<TarnSupportFile>("files"_L1),
        .time_entries = json.list<TarnSupportTimeEntry>("time_entries"_L1),
        .running_timers = json.list<TarnSupportRunningTimer>("running_timers"_L1) };
}
