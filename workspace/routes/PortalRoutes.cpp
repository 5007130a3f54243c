#include "workspace/routes/PortalRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/PortalSeed.h"
#include "workspace/routes/PortalStore.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace PortalRoutes {

void add(WorkspaceServer &server)
{
    const auto portals = std::make_shared<PortalStore>(server.store());
    // Also a data folder made before there were portals gets the demo's.
    if (!portals->hasPortals())
        PortalSeed::plant(*portals);

    using Arguments = QStringList;
    const auto open = [portals](auto handler) {
        return [portals, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!portals->mayUse(me))
                return WorkspaceReply::error(403, u"Client portals are not open to you."_s);
            const QJsonObject body = request.jsonBody().value_or(QJsonObject());
            return handler(*portals, me, request.arguments(), body);
        };
    };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
    const auto route = [&router](const char *method, const QString &path, WorkspaceRouter::Handler handler) {
        router.add(method, path, Access::Session, std::move(handler));
    };
    using S = PortalStore;
    using B = const QJsonObject &;
    using A = const Arguments &;
    using M = const QString &;

    route("GET", u"/api/portals"_s, open([](S &s, M, A, B) { return s.dashboard(); }));
    route("POST", u"/api/portals/:client/alerts/:id/acknowledge"_s,
        open([](S &s, M me, A a, B) { return s.acknowledge(me, a.at(0), a.at(1)); }));
    route("GET", u"/api/portals/:client"_s, open([](S &s, M, A a, B) { return s.detail(a.at(0)); }));
    route("PATCH", u"/api/portals/:client"_s, open([](S &s, M me, A a, B b) { return s.update(me, a.at(0), b); }));
    route("GET", u"/api/portals/:client/profile"_s, open([](S &s, M, A a, B) { return s.profile(a.at(0)); }));
    route("GET", u"/api/portals/:client/performance"_s, open([](S &s, M, A a, B) { return s.performance(a.at(0)); }));
    route("POST", u"/api/portals/:client/performance/sync"_s,
        open([](S &s, M, A a, B) { return s.syncPerformance(a.at(0)); }));
    route("POST", u"/api/portals/:client/refresh"_s, open([](S &s, M, A a, B) { return s.refresh(a.at(0)); }));
    route("POST", u"/api/portals/:client/people"_s, open([](S &s, M, A a, B b) { return s.invite(a.at(0), b); }));
    route("DELETE", u"/api/portals/:client/people/:id"_s,
        open([](S &s, M, A a, B) { return s.removePerson(a.at(0), a.at(1)); }));
    route("POST", u"/api/portals/:client/people/:id/link"_s,
        open([](S &s, M, A a, B) { return s.personLink(a.at(0), a.at(1)); }));
    route("POST", u"/api/portals/:client/lead-key"_s,
        open([](S &s, M, A a, B) { return s.issueKey(a.at(0), S::Key::Lead); }));
    route("POST", u"/api/portals/:client/pilo-key"_s,
        open([](S &s, M, A a, B) { return s.issueKey(a.at(0), S::Key::Pilo); }));
    route("DELETE", u"/api/portals/:client/pilo-key"_s, open([](S &s, M, A a, B) { return s.revokePiloKey(a.at(0)); }));
    route(
        "POST", u"/api/portals/:client/reports"_s, open([](S &s, M, A a, B b) { return s.createReport(a.at(0), b); }));
    route(
        "GET", u"/api/portals/:client/reports/:id"_s, open([](S &s, M, A a, B) { return s.report(a.at(0), a.at(1)); }));
    route("PATCH", u"/api/portals/:client/reports/:id"_s,
        open([](S &s, M, A a, B b) { return s.setPublished(a.at(0), a.at(1), b); }));
    route("DELETE", u"/api/portals/:client/reports/:id"_s,
        open([](S &s, M, A a, B) { return s.deleteReport(a.at(0), a.at(1)); }));
    route("DELETE", u"/api/portals/:client/work/:id"_s,
        open([](S &s, M, A a, B) { return s.deleteWork(a.at(0), a.at(1)); }));

    // The client's own site and tools, with a key instead of a session. The
    // key travels in a header, which the request log does not keep.
    const auto keyOf = [](const WorkspaceRequest &request) {
        return QString::fromLatin1(request.header("X-Portal-Key").value_or(QByteArray()));
    };
    router.add("POST", u"/api/portal-keys/leads"_s, Access::Public, [portals, keyOf](const WorkspaceRequest &request) {
        return portals->intakeLead(keyOf(request), request.jsonBody().value_or(QJsonObject()));
    });
    router.add("GET", u"/api/portal-keys/reports"_s, Access::Public,
        [portals, keyOf](const WorkspaceRequest &request) { return portals->publishedReports(keyOf(request)); });
}

} // namespace PortalRoutes
