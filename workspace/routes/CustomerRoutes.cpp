#include "workspace/routes/CustomerRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/CustomerSeed.h"
#include "workspace/routes/CustomerStore.h"

#include <QJsonObject>
#include <QSqlDatabase>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

// A file travels as base64 (4/3 of its size) inside its JSON envelope.
constexpr qint64 fileBodyBytes = CustomerStore::fileLimitBytes * 4 / 3 + 64 * 1024;

QJsonObject body(const WorkspaceRequest &request)
{
    return request.jsonBody().value_or(QJsonObject());
}

} // namespace

namespace CustomerRoutes {

bool add(WorkspaceServer &server, QString *error)
{
    const auto customers = std::make_shared<CustomerStore>(server.store());
    if (!customers->createSchema()) {
        *error = u"Could not make the customer register's tables."_s;
        return false;
    }
    // Also a data folder made before there was a register gets the demo's.
    if (!customers->hasProfiles()) {
        QSqlDatabase db = server.store().database();
        db.transaction();
        CustomerSeed::plant(*customers);
        db.commit();
    }

    WorkspaceRouter &router = server.router();
    const auto route = [&router, customers](QByteArray method, const QString &pattern, auto handler,
                           qint64 bodyLimit = WorkspaceLimits::bodyBytes) {
        router.add(
            std::move(method), pattern, Access::Session,
            [customers, handler](const WorkspaceRequest &request) { return handler(*customers, request); }, bodyLimit);
    };
    using Store = CustomerStore;
    using Request = WorkspaceRequest;

    route("GET", u"/api/clients"_s, [](Store &s, const Request &r) { return s.search(r.query(u"q"_s)); });
    route("GET", u"/api/crm360/clients"_s, [](Store &s, const Request &r) { return s.list(r.query(u"stage"_s)); });
    route(
        "GET", u"/api/crm360/clients/:id"_s, [](Store &s, const Request &r) { return s.profile(r.arguments().at(0)); });
    route("PATCH", u"/api/crm360/clients/:id"_s,
        [](Store &s, const Request &r) { return s.saveDetails(r.arguments().at(0), body(r)); });
    route("GET", u"/api/crm360/clients/:id/timeline"_s, [](Store &s, const Request &r) {
        return s.timeline(r.arguments().at(0), r.query(u"before"_s), r.query(u"limit"_s).toInt());
    });
    route("POST", u"/api/crm360/clients/:id/stage"_s, [](Store &s, const Request &r) {
        return s.changeStage(r.session().personId, r.arguments().at(0), body(r).value("stage"_L1).toString());
    });
    route("POST", u"/api/crm360/clients/:id/notes"_s, [](Store &s, const Request &r) {
        return s.addNote(r.session().personId, r.arguments().at(0), body(r).value("body"_L1).toString());
    });
    route("POST", u"/api/crm360/clients/:id/contacts"_s,
        [](Store &s, const Request &r) { return s.addContact(r.arguments().at(0), body(r)); });
    route("DELETE", u"/api/crm360/contacts/:id"_s,
        [](Store &s, const Request &r) { return s.deleteContact(r.arguments().at(0)); });
    route("PATCH", u"/api/crm360/tasks/:id"_s,
        [](Store &s, const Request &r) { return s.updateTask(r.arguments().at(0), body(r)); });
    route("DELETE", u"/api/crm360/tasks/:id"_s,
        [](Store &s, const Request &r) { return s.deleteTask(r.arguments().at(0)); });
    route("POST", u"/api/crm360/drafts/:id/send"_s,
        [](Store &s, const Request &r) { return s.sendDraft(r.session().personId, r.arguments().at(0)); });
    route("DELETE", u"/api/crm360/drafts/:id"_s,
        [](Store &s, const Request &r) { return s.discardDraft(r.arguments().at(0)); });
    route(
        "POST", u"/api/records/:id/files"_s,
        [](Store &s, const Request &r) { return s.uploadFile(r.session().personId, r.arguments().at(0), body(r)); },
        fileBodyBytes);
    route("GET", u"/api/records/:id/files/:file"_s,
        [](Store &s, const Request &r) { return s.downloadFile(r.arguments().at(0), r.arguments().at(1)); });
    route("DELETE", u"/api/records/:id/files/:file"_s,
        [](Store &s, const Request &r) { return s.deleteFile(r.arguments().at(0), r.arguments().at(1)); });
    route("POST", u"/api/records/:id/reminders"_s,
        [](Store &s, const Request &r) { return s.addReminder(r.session().personId, r.arguments().at(0), body(r)); });
    route("POST", u"/api/records/:id/archive"_s,
        [](Store &s, const Request &r) { return s.archive(r.arguments().at(0)); });
    route("POST", u"/api/sales/:id/follow-up"_s, [](Store &s, const Request &r) {
        return s.setFollowUp(r.arguments().at(0), body(r).value("on"_L1).toString());
    });
    return true;
}

} // namespace CustomerRoutes
