#include "workspace/routes/TestRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/WorkspaceTokens.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace TestRoutes {

void add(WorkspaceServer &server)
{
    using Access = WorkspaceRouter::Access;
    WorkspaceRouter &router = server.router();

    router.add("POST", u"/api/test/faults"_s, Access::Public, [&server](const WorkspaceRequest &request) {
        const std::optional<QJsonObject> body = request.jsonBody();
        if (!body)
            return WorkspaceReply::error(400, u"A fault is a JSON object."_s);
        QString error;
        std::optional<WorkspaceFaults::Fault> fault = WorkspaceFaults::fromJSON(*body, &error);
        if (!fault)
            return WorkspaceReply::error(400, error);
        server.faults().add(std::move(*fault));
        return WorkspaceReply::ok();
    });

    router.add("DELETE", u"/api/test/faults"_s, Access::Public, [&server](const WorkspaceRequest &) {
        server.faults().clear();
        return WorkspaceReply::ok();
    });

    router.add("GET", u"/api/test/requests"_s, Access::Public,
        [&server](const WorkspaceRequest &) { return WorkspaceReply::json(server.faults().requests()); });

    router.add("DELETE", u"/api/test/requests"_s, Access::Public, [&server](const WorkspaceRequest &) {
        server.faults().clearRequests();
        return WorkspaceReply::ok();
    });

    // A route as large as the largest (sending mail), for the body limit.
    router.add(
        "POST", u"/api/test/upload"_s, Access::Public,
        [](const WorkspaceRequest &request) {
            return WorkspaceReply::json(QJsonObject { { u"bytes"_s, request.body().size() } });
        },
        WorkspaceLimits::mailBodyBytes);

    router.add("GET", u"/api/test/sign-in-code"_s, Access::Public, [&server](const WorkspaceRequest &request) {
        const QString challenge = request.query(u"challenge"_s);
        if (!WorkspaceTokens::isChallenge(challenge))
            return WorkspaceReply::error(400, u"The challenge must be 43 characters of URL-safe Base64."_s);
        const std::optional<WorkspacePerson> person = server.store().personByEmail(request.query(u"email"_s));
        if (!person)
            return WorkspaceReply::error(404, u"Nobody has that address."_s);
        return WorkspaceReply::json(QJsonObject {
            { u"code"_s, server.store().createSignInCode(person->id, challenge, server.options().codeTtlSeconds) } });
    });
}

} // namespace TestRoutes
