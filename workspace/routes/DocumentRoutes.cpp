#include "workspace/routes/DocumentRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/DocumentSeed.h"
#include "workspace/routes/DocumentStore.h"
#include "workspace/routes/SigningRoutes.h"

#include <QJsonObject>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

// The service's host as the client asked it: signing links are made on it.
QString hostOf(const WorkspaceRequest &request)
{
    return QString::fromLatin1(request.header("Host").value_or(QByteArray()));
}

} // namespace

namespace DocumentRoutes {

void add(WorkspaceServer &server)
{
    const auto documents = std::make_shared<DocumentStore>(server.store());
    // Also a data folder made before there were documents gets the demo's.
    if (!documents->hasDocuments())
        DocumentSeed::plant(*documents, server.store().database());
    documents->prepareSigning();

    const auto open = [documents](auto handler) {
        return [documents, handler](const WorkspaceRequest &request) {
            const QString &me = request.session().personId;
            if (!documents->mayUse(me))
                return WorkspaceReply::error(403, u"Documents are not open to you."_s);
            return handler(*documents, me, request);
        };
    };
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;

    router.add("GET", u"/api/documents"_s, Access::Session,
        open([](DocumentStore &store, const QString &, const WorkspaceRequest &request) {
            return store.list(request.query(u"kind"_s));
        }));
    router.add("GET", u"/api/documents/:id/pdf"_s, Access::Session,
        open([](DocumentStore &store, const QString &, const WorkspaceRequest &request) {
            return store.pdf(request.arguments().at(0));
        }));
    router.add("POST", u"/api/envelopes"_s, Access::Session,
        open([](DocumentStore &store, const QString &me, const WorkspaceRequest &request) {
            return store.createEnvelope(me, request.jsonBody().value_or(QJsonObject()), hostOf(request));
        }));
    router.add("GET", u"/api/envelopes/:id"_s, Access::Session,
        open([](DocumentStore &store, const QString &, const WorkspaceRequest &request) {
            return store.envelope(request.arguments().at(0), hostOf(request));
        }));
    router.add("POST", u"/api/envelopes/:id/send"_s, Access::Session,
        open([](DocumentStore &store, const QString &, const WorkspaceRequest &request) {
            return store.send(request.arguments().at(0), hostOf(request));
        }));
    SigningRoutes::add(server, documents);
}

} // namespace DocumentRoutes
