#include "screens/workplan/TarnWorkPlanCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnWorkPlanCalls {

QCoro::Task<TarnWorkPlan> workPlan(TarnAPI &api, const QString &week)
{
    return api.request<TarnWorkPlan>(TarnPath(u"/api/work-plan"_s).query("week"_L1, week));
}

QCoro::Task<TarnWorkEntry> completeWorkEntry(TarnAPI &api, const QString &entry, const TarnWorkEntryCompletion &done)
{
    return api.request<TarnWorkEntry>(
        TarnPath(u"/api/work-plan/entries"_s).id(entry).segment("complete"_L1), TarnMethod::Post, done);
}

QCoro::Task<TarnCreatedID> createAdminTask(TarnAPI &api, const TarnAdminTaskDraft &draft)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/work-plan/admin-tasks"_s), TarnMethod::Post, draft);
}

QCoro::Task<TarnWorkEntry> updateAdminTask(TarnAPI &api, const QString &task, const TarnAdminTaskUpdate &update)
{
    return api.request<TarnWorkEntry>(TarnPath(u"/api/work-plan/admin-tasks"_s).id(task), TarnMethod::Patch, update);
}

QCoro::Task<TarnCreatedID> createReminder(TarnAPI &api, const TarnReminderDraft &draft)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/work-plan/reminders"_s), TarnMethod::Post, draft);
}

QCoro::Task<TarnCreatedID> addCoachNote(TarnAPI &api, const QString &person, const TarnCoachNoteDraft &note)
{
    return api.request<TarnCreatedID>(
        TarnPath(u"/api/work-plan/people"_s).id(person).segment("coach-notes"_L1), TarnMethod::Post, note);
}

} // namespace TarnWorkPlanCalls
