#include "workspace/routes/BankFeedRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BankFeedStore.h"
#include "workspace/routes/BooksSql.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace BankFeedRoutes {

void add(WorkspaceServer &server)
{
    const auto feed = std::make_shared<BankFeedStore>(server.store());
    // Also a data folder made before there was a feed gets the demo's connection.
    if (!feed->hasAccounts())
        feed->plantDemo(BooksSql::nowMs());

    using Handler = std::function<WorkspaceReply(BankFeedStore &, const QString &, const WorkspaceRequest &)>;
    const auto owners = [feed](Handler handler) {
        return [feed, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!feed->isOwner(me))
                return WorkspaceReply::error(403, u"The bank feed is open to the company's owners."_s);
            return handler(*feed, me, request);
        };
    };
    const auto body = [](const WorkspaceRequest &request) { return request.jsonBody().value_or(QJsonObject()); };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;

    router.add("GET", u"/api/accounting/mercury"_s, Access::Session,
        owners([](BankFeedStore &store, const QString &, const WorkspaceRequest &) {
            return store.summary(BooksSql::nowMs());
        }));
    router.add("POST", u"/api/accounting/mercury/connect"_s, Access::Session,
        owners([](BankFeedStore &store, const QString &me, const WorkspaceRequest &) {
            return store.connect(me, BooksSql::nowMs());
        }));
    router.add("POST", u"/api/accounting/mercury/accounts/:id/baseline"_s, Access::Session,
        owners([body](BankFeedStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.setBaseline(me, request.arguments().at(0), body(request));
        }));
    router.add("POST", u"/api/accounting/mercury/accounts/:id/reconcile"_s, Access::Session,
        owners([body](BankFeedStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.reconcile(me, request.arguments().at(0), body(request));
        }));
}

} // namespace BankFeedRoutes
