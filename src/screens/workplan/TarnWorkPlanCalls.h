#pragma once

#include "screens/workplan/TarnWorkPlan.h"
#include "screens/workplan/TarnWorkPlanRequests.h"
#include "service/TarnCreatedID.h"

#include <QCoroTask>
#include <QString>

class TarnAPI;

// The work plan's endpoints.
namespace TarnWorkPlanCalls {

// The week that starts on the Monday `week` ("YYYY-MM-DD").
QCoro::Task<TarnWorkPlan> workPlan(TarnAPI &api, const QString &week);
// Answers the entry as it now is.
QCoro::Task<TarnWorkEntry> completeWorkEntry(TarnAPI &api, const QString &entry, const TarnWorkEntryCompletion &done);
QCoro::Task<TarnCreatedID> createAdminTask(TarnAPI &api, const TarnAdminTaskDraft &draft);
// Answers the task as it now is; a stale `version` is refused.
QCoro::Task<TarnWorkEntry> updateAdminTask(TarnAPI &api, const QString &task, const TarnAdminTaskUpdate &update);
QCoro::Task<TarnCreatedID> createReminder(TarnAPI &api, const TarnReminderDraft &draft);
QCoro::Task<TarnCreatedID> addCoachNote(TarnAPI &api, const QString &person, const TarnCoachNoteDraft &note);

} // namespace TarnWorkPlanCalls
