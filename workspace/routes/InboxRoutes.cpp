#include "workspace/routes/InboxRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/InboxSeed.h"
#include "workspace/routes/InboxStore.h"

#include <QDateTime>
#include <QJsonObject>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

QString field(const WorkspaceRequest &request, QLatin1StringView key)
{
    return request.jsonBody().value_or(QJsonObject()).value(key).toString();
}

} // namespace

namespace InboxRoutes {

void add(WorkspaceServer &server)
{
    // Shared by the routes, which live as long as the server.
    const auto inbox = std::make_shared<InboxStore>(server.store());
    // Also a data folder made before there was an inbox gets the demo's threads.
    if (!inbox->hasThreads())
        InboxSeed::plant(*inbox, server.store().database());

    // Only people who may open the inbox reach its handlers.
    const auto open = [inbox](auto handler) {
        return [inbox, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!inbox->mayUse(me))
                return WorkspaceReply::error(403, u"The inbox is not open to you."_s);
            return handler(*inbox, me, request);
        };
    };
    WorkspaceRouter &router = server.router();

    router.add("GET", u"/api/inbox"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.list(me, request.query(u"scope"_s), request.query(u"view"_s), request.query(u"kind"_s));
        }));
    // Before "/api/inbox/:id", which would take them otherwise.
    router.add("GET", u"/api/inbox/notifications"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &) { return store.notifications(me); }));
    router.add("POST", u"/api/inbox/notifications"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &request) {
            const QString entry = field(request, "entry_id"_L1);
            if (entry.isEmpty())
                return WorkspaceReply::error(400, u"Say which notification: \"entry_id\"."_s);
            store.dismiss(me, entry);
            return WorkspaceReply::ok();
        }));
    router.add("POST", u"/api/inbox/new"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.startConversation(
                me, field(request, "kind"_L1), field(request, "client_id"_L1), field(request, "customer_address"_L1));
        }));
    router.add("GET", u"/api/inbox/:id"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.thread(me, request.arguments().at(0));
        }));
    router.add("POST", u"/api/inbox/:id/assist"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.assist(me, request.arguments().at(0), field(request, "draft"_L1));
        }));
    router.add("POST", u"/api/inbox/:id/create-customer"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.createCustomer(
                me, request.arguments().at(0), field(request, "board_id"_L1), field(request, "name"_L1));
        }));
    router.add("POST", u"/api/inbox/:id/:action"_s, Access::Session,
        open([](InboxStore &store, const QString &me, const WorkspaceRequest &request) {
            const std::optional<QJsonObject> body = request.jsonBody();
            if (!body)
                return WorkspaceReply::error(400, u"An action's body is a JSON object."_s);
            return store.act(me, request.arguments().at(0), request.arguments().at(1), *body);
        }));

    if (server.options().testFaults) {
        router.add("POST", u"/api/test/inbox/inbound"_s, Access::Public, [inbox](const WorkspaceRequest &request) {
            const QString address = field(request, "customer_address"_L1);
            const QString body = field(request, "body"_L1);
            if (address.isEmpty() || body.isEmpty())
                return WorkspaceReply::error(400, u"An inbound text needs \"customer_address\" and \"body\"."_s);
            const QString thread = inbox->receive(u"text"_s, address, body, QDateTime::currentMSecsSinceEpoch());
            return WorkspaceReply::json(QJsonObject { { u"id"_s, thread } });
        });
    }
}

} // namespace InboxRoutes
