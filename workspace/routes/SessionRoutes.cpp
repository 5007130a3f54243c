#include "workspace/routes/SessionRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

QJsonValue orNull(const std::optional<QString> &text)
{
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

QJsonObject sessionRecord(const WorkspacePerson &person, const WorkspaceStore::Session &session)
{
    return {
        { u"id"_s, person.id },
        { u"name"_s, person.name },
        { u"email"_s, person.email },
        { u"csrf"_s, session.csrf },
        { u"apps"_s, QJsonArray::fromStringList(person.apps) },
        { u"role"_s, person.role },
        { u"owner"_s, person.owner },
        { u"books_owner"_s, person.books_owner },
        { u"background"_s, orNull(person.background) },
        { u"accent"_s, orNull(person.accent) },
        { u"text_size"_s, orNull(person.text_size) },
    };
}

} // namespace

namespace SessionRoutes {

void add(WorkspaceServer &server)
{
    WorkspaceRouter &router = server.router();

    router.add("GET", u"/api/session"_s, Access::Session, [&server](const WorkspaceRequest &request) {
        const std::optional<WorkspacePerson> person = server.store().person(request.session().personId);
        if (!person)
            return WorkspaceReply::signInRequired();
        return WorkspaceReply::json(sessionRecord(*person, request.session()));
    });

    router.add("POST", u"/api/logout"_s, Access::Session, [&server](const WorkspaceRequest &request) {
        server.store().endSession(request.session().id);
        return WorkspaceReply::ok();
    });
}

} // namespace SessionRoutes
