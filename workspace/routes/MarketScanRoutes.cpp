#include "workspace/routes/MarketScanRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/MarketScanStore.h"

using namespace Qt::StringLiterals;

namespace MarketScanRoutes {

void add(WorkspaceServer &server)
{
    const auto scans = std::make_shared<MarketScanStore>(server.store());
    if (!scans->createSchema())
        return;
    // The demo: scans Maren and Sam ran in the last days.
    if (!scans->hasScans()) {
        constexpr qint64 dayMs = 24 * 3600 * 1000;
        const qint64 now = BooksSql::nowMs();
        scans->addScan(u"p-maren"_s, u"bakeries"_s, u"Portland, OR"_s, now - 6 * dayMs);
        scans->addScan(u"p-maren"_s, u"yoga studios"_s, u"Beaverton, OR"_s, now - 3 * dayMs);
        scans->addScan(u"p-maren"_s, u"dentists"_s, u"Portland, OR"_s, now - dayMs / 3);
        scans->addScan(u"p-sam"_s, u"florists"_s, u"Portland, OR"_s, now - 2 * dayMs);
    }

    using Handler = std::function<WorkspaceReply(MarketScanStore &, const QString &, const WorkspaceRequest &)>;
    const auto gated = [scans](Handler handler) {
        return [scans, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!scans->mayUse(me))
                return WorkspaceReply::error(403, u"Market scans are not open to you."_s);
            return handler(*scans, me, request);
        };
    };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
    router.add("GET", u"/api/market-scans"_s, Access::Session,
        gated([](MarketScanStore &store, const QString &me, const WorkspaceRequest &) { return store.scans(me); }));
    router.add("POST", u"/api/market-scans"_s, Access::Session,
        gated([](MarketScanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.scan(me, request.jsonBody().value_or(QJsonObject()));
        }));
    router.add("GET", u"/api/market-scans/:id"_s, Access::Session,
        gated([](MarketScanStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.result(me, request.arguments().at(0));
        }));
}

} // namespace MarketScanRoutes
