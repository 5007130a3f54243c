#include "workspace/routes/WorkPlanRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/WorkPlanSeed.h"
#include "workspace/routes/WorkPlanStore.h"

#include <QDate>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace WorkPlanRoutes {

void add(WorkspaceServer &server)
{
    const auto plan = std::make_shared<WorkPlanStore>(server.store());
    WorkPlanSeed::plant(*plan, QDate::currentDate());

    using Handler = std::function<WorkspaceReply(WorkPlanStore &, const QString &, const WorkspaceRequest &)>;
    const auto sales = [plan](Handler handler) {
        return [plan, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!plan->mayPlan(me))
                return WorkspaceReply::error(403, u"The work plan is not open to you."_s);
            return handler(*plan, me, request);
        };
    };
    const auto body = [](const WorkspaceRequest &request) { return request.jsonBody().value_or(QJsonObject()); };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;

    router.add("GET", u"/api/work-plan"_s, Access::Session,
        sales([](WorkPlanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.plan(me, request.query(u"week"_s));
        }));
    router.add("POST", u"/api/work-plan/entries/:id/complete"_s, Access::Session,
        sales([body](WorkPlanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.complete(me, request.arguments().at(0), body(request));
        }));
    router.add("POST", u"/api/work-plan/admin-tasks"_s, Access::Session,
        sales([body](WorkPlanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.createAdminTask(me, body(request));
        }));
    router.add("PATCH", u"/api/work-plan/admin-tasks/:id"_s, Access::Session,
        sales([body](WorkPlanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.updateAdminTask(me, request.arguments().at(0), body(request));
        }));
    router.add("POST", u"/api/work-plan/reminders"_s, Access::Session,
        sales([body](WorkPlanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.createReminder(me, body(request));
        }));
    router.add("POST", u"/api/work-plan/people/:id/coach-notes"_s, Access::Session,
        sales([body](WorkPlanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.addCoachNote(me, request.arguments().at(0), body(request));
        }));
}

} // namespace WorkPlanRoutes
