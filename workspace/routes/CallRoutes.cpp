#include "workspace/routes/CallRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/CallSeed.h"
#include "workspace/routes/CallStore.h"

#include <QJsonObject>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace CallRoutes {

void add(WorkspaceServer &server)
{
    const auto calls = std::make_shared<CallStore>(server.store());
    // Also a data folder made before there was a call book gets the demo's calls.
    if (!calls->hasCalls())
        CallSeed::plant(*calls, server.store().database());

    const auto open = [calls](auto handler) {
        return [calls, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!calls->mayUse(me))
                return WorkspaceReply::error(403, u"Calls are not open to you."_s);
            return handler(*calls, me, request);
        };
    };
    const auto body = [](const WorkspaceRequest &request) { return request.jsonBody().value_or(QJsonObject()); };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;

    router.add("GET", u"/api/calls"_s, Access::Session,
        open([](CallStore &store, const QString &, const WorkspaceRequest &) { return store.list(); }));
    router.add("POST", u"/api/calls"_s, Access::Session,
        open([body](CallStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.start(me, body(request));
        }));
    router.add("PATCH", u"/api/calls/:id"_s, Access::Session,
        open([body](CallStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.saveCell(me, request.arguments().at(0), body(request));
        }));
    router.add("GET", u"/api/calls/:id/recording"_s, Access::Session,
        open([](CallStore &store, const QString &, const WorkspaceRequest &request) {
            return store.recording(request.arguments().at(0));
        }));
    // Leads are the sales screen's, whether or not the person places calls.
    const auto sales = [calls, &server](auto handler) {
        return [calls, handler, &server](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!server.store().opens(me, u"Sales"_s))
                return WorkspaceReply::error(403, u"Sales is not open to you."_s);
            return handler(*calls, me, request);
        };
    };
    router.add("GET", u"/api/sales/leads"_s, Access::Session,
        sales([](CallStore &store, const QString &, const WorkspaceRequest &) { return store.leads(); }));
    router.add("GET", u"/api/sales/leads/:id"_s, Access::Session,
        sales([](CallStore &store, const QString &, const WorkspaceRequest &request) {
            return store.lead(request.arguments().at(0));
        }));
}

} // namespace CallRoutes
