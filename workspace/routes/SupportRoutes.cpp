#include "workspace/routes/SupportRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/SupportSeed.h"
#include "workspace/routes/SupportStore.h"

#include <QJsonObject>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

// A file of the largest size as base64 (4/3), with room for its name.
constexpr qint64 fileBodyBytes = SupportStore::fileLimit / 3 * 4 + 64 * 1024;

QString field(const WorkspaceRequest &request, QLatin1StringView key)
{
    return request.jsonBody().value_or(QJsonObject()).value(key).toString();
}

QString argument(const WorkspaceRequest &request)
{
    return request.arguments().at(0);
}

} // namespace

namespace SupportRoutes {

void add(WorkspaceServer &server)
{
    const auto support = std::make_shared<SupportStore>(server.store());
    // Also a data folder made before there was a board gets the demo's.
    if (!support->hasTasks())
        SupportSeed::plant(*support, server.store().database());

    const auto open = [support](auto handler) {
        return [support, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!support->mayUse(me))
                return WorkspaceReply::error(403, u"The support board is not open to you."_s);
            return handler(*support, me, request);
        };
    };
    const auto body = [](const WorkspaceRequest &request) { return request.jsonBody().value_or(QJsonObject()); };
    WorkspaceRouter &router = server.router();

    router.add("GET", u"/api/support/board"_s, Access::Session,
        open([](SupportStore &store, const QString &me, const WorkspaceRequest &) { return store.board(me); }));
    router.add("POST", u"/api/support/tasks"_s, Access::Session,
        open([body](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.createTask(me, body(request));
        }));
    router.add("GET", u"/api/support/tasks/:id"_s, Access::Session,
        open([](SupportStore &store, const QString &, const WorkspaceRequest &request) {
            return store.task(argument(request));
        }));
    router.add("PATCH", u"/api/support/tasks/:id"_s, Access::Session,
        open([body](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.updateTask(me, argument(request), body(request));
        }));
    router.add("POST", u"/api/support/tasks/:id/subtasks"_s, Access::Session,
        open([](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.createSubtask(me, argument(request), field(request, "title"_L1).trimmed());
        }));
    router.add("POST", u"/api/support/tasks/:id/comments"_s, Access::Session,
        open([](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.addComment(me, argument(request), field(request, "body"_L1));
        }));
    router.add("POST", u"/api/support/tasks/:id/files"_s, Access::Session,
        open([body](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.attachFile(me, argument(request), body(request));
        }),
        fileBodyBytes);
    router.add("GET", u"/api/support/files/:id"_s, Access::Session,
        open([](SupportStore &store, const QString &, const WorkspaceRequest &request) {
            return store.file(argument(request));
        }));
    router.add("POST", u"/api/support/tasks/:id/timer"_s, Access::Session,
        open([](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.trackTime(me, argument(request), field(request, "action"_L1));
        }));
    router.add("POST", u"/api/support/tasks/:id/time"_s, Access::Session,
        open([body](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.logTime(me, argument(request), body(request));
        }));
    router.add("POST", u"/api/support/recurring"_s, Access::Session,
        open([body](SupportStore &store, const QString &, const WorkspaceRequest &request) {
            return store.addRecurring(body(request));
        }));
    router.add("POST", u"/api/support/recurring/:id/stop"_s, Access::Session,
        open([](SupportStore &store, const QString &, const WorkspaceRequest &request) {
            return store.stopRecurring(argument(request));
        }));
    router.add("GET", u"/api/support/clients/:id"_s, Access::Session,
        open([](SupportStore &store, const QString &, const WorkspaceRequest &request) {
            return store.client(argument(request));
        }));
    router.add("POST", u"/api/support/clients/:id/notes"_s, Access::Session,
        open([](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.addClientNote(me, argument(request), field(request, "body"_L1));
        }));
    router.add("POST", u"/api/support/views"_s, Access::Session,
        open([body](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.saveView(me, body(request));
        }));
    router.add("PATCH", u"/api/support/views/:id"_s, Access::Session,
        open([](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.renameView(me, argument(request), field(request, "name"_L1));
        }));
    router.add("DELETE", u"/api/support/views/:id"_s, Access::Session,
        open([](SupportStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.deleteView(me, argument(request));
        }));
}

} // namespace SupportRoutes
