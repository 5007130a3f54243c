#include "workspace/routes/WebsiteRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/WebsiteStore.h"

using namespace Qt::StringLiterals;

namespace WebsiteRoutes {

void add(WorkspaceServer &server)
{
    const auto websites = std::make_shared<WebsiteStore>(server.store());
    if (!websites->createSchema())
        return;
    // The demo: sites for the inbox's customers, most live.
    if (!websites->hasSites()) {
        constexpr qint64 dayMs = 24 * 3600 * 1000;
        const qint64 now = BooksSql::nowMs();
        websites->addSite(
            u"c-brightwater"_s, u"brightwaterdental.example"_s, u"live"_s, now - 3 * dayMs, 9996, 4120, 38);
        websites->addSite(u"c-oakline"_s, u"oaklinestudio.example"_s, u"live"_s, now - 12 * dayMs, 9987, 2210, 17);
        websites->addSite(u"c-fernhill"_s, u"fernhillbakery.example"_s, u"live"_s, now - dayMs, 9999, 6380, 64);
        websites->addSite(u"c-marlow"_s, u"marlowandsons.example"_s, u"live"_s, now - 40 * dayMs, 9871, 980, 5);
        websites->addSite(u"c-tidewater"_s, u"tidewateryoga.example"_s, u"building"_s, 0, 0, 0, 0);
        websites->addSite(u"c-harbor"_s, u"harborvet.example"_s, u"live"_s, now - 6 * dayMs, 9993, 3015, 41);
        websites->addSite(u"c-quill"_s, u"quillandcoffee.example"_s, u"paused"_s, now - 90 * dayMs, 0, 0, 0);
    }

    using Handler = std::function<WorkspaceReply(WebsiteStore &, const WorkspaceRequest &)>;
    const auto gated = [websites](Handler handler) {
        return [websites, handler](const WorkspaceRequest &request) {
            if (!websites->mayUse(request.session().personId))
                return WorkspaceReply::error(403, u"Websites are not open to you."_s);
            return handler(*websites, request);
        };
    };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
    router.add("GET", u"/api/websites"_s, Access::Session,
        gated([](WebsiteStore &store, const WorkspaceRequest &) { return store.sites(); }));
    router.add("POST", u"/api/websites/site-check"_s, Access::Session,
        gated([](WebsiteStore &store, const WorkspaceRequest &request) {
            return store.check(request.jsonBody().value_or(QJsonObject()));
        }));
}

} // namespace WebsiteRoutes
