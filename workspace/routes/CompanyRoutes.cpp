#include "workspace/routes/CompanyRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/CompanySeed.h"
#include "workspace/routes/CompanyStore.h"

#include <QJsonObject>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace CompanyRoutes {

void add(WorkspaceServer &server)
{
    const auto company = std::make_shared<CompanyStore>(server.store());
    // Also a data folder made before there was a handbook gets the demo's.
    if (!company->hasHandbook())
        CompanySeed::plant(*company, server.store().database());

    using Handler = std::function<WorkspaceReply(CompanyStore &, const QString &, const WorkspaceRequest &)>;
    // `app` empty: owners only.
    const auto gated = [company](const QString &app, const QString &refusal, Handler handler) {
        return [company, app, refusal, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            const bool allowed = app.isEmpty() ? company->isOwner(me) : company->mayOpen(me, app);
            if (!allowed)
                return WorkspaceReply::error(403, refusal);
            return handler(*company, me, request);
        };
    };
    const auto owners = [gated](Handler handler) {
        return gated({}, u"Only the company's owner manages the team."_s, std::move(handler));
    };
    const auto docs = [gated](Handler handler) {
        return gated(u"Docs"_s, u"The handbook is not open to you."_s, std::move(handler));
    };
    const auto thoughts = [gated](Handler handler) {
        return gated(u"Overview"_s, u"The thought board is not open to you."_s, std::move(handler));
    };
    const auto body = [](const WorkspaceRequest &request) { return request.jsonBody().value_or(QJsonObject()); };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;

    router.add("PATCH", u"/api/team/me"_s, Access::Session, [company, body](const WorkspaceRequest &request) {
        return company->rename(request.session().personId, body(request));
    });
    router.add("GET", u"/api/team/people"_s, Access::Session, [company](const WorkspaceRequest &request) {
        return company->search(request.session().personId, request.query(u"q"_s));
    });
    router.add("POST", u"/api/team/people"_s, Access::Session,
        owners([body](CompanyStore &store, const QString &, const WorkspaceRequest &request) {
            return store.createMember(body(request));
        }));
    router.add("PATCH", u"/api/team/people/:id/access"_s, Access::Session,
        owners([body](CompanyStore &store, const QString &, const WorkspaceRequest &request) {
            return store.updateAccess(request.arguments().at(0), body(request));
        }));
    router.add("GET", u"/api/company/sops"_s, Access::Session,
        docs([](CompanyStore &store, const QString &, const WorkspaceRequest &) { return store.sops(); }));
    router.add("GET", u"/api/company/thoughts"_s, Access::Session,
        thoughts([](CompanyStore &store, const QString &me, const WorkspaceRequest &) { return store.posts(me); }));
    router.add("POST", u"/api/company/thoughts/:id/read"_s, Access::Session,
        thoughts([](CompanyStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.markRead(me, request.arguments().at(0));
        }));
    router.add("POST", u"/api/company/thoughts/:id/decision"_s, Access::Session,
        owners([body](CompanyStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.decide(me, request.arguments().at(0), body(request));
        }));
}

} // namespace CompanyRoutes
