#include "workspace/routes/AgentRoutes.h"

#include "workspace/WorkspaceAgent.h"
#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"

#include <QJsonObject>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

constexpr qsizetype maxContent = 4000;
constexpr qsizetype maxKey = 100;
constexpr qsizetype maxTitle = 200;

std::optional<QString> optionalText(const QJsonObject &body, QLatin1StringView key)
{
    const QJsonValue value = body.value(key);
    if (!value.isString() || value.toString().isEmpty())
        return std::nullopt;
    return value.toString();
}

// Blocked work is reviewed by the one owner address the app is built with,
// and only while that person is an admin: the same rule as the app's.
bool reviews(const WorkspacePerson &person)
{
    return person.role == "admin"_L1
        && person.email.compare(QLatin1StringView(TARN_OWNER_ADDRESS), Qt::CaseInsensitive) == 0;
}

WorkspaceReply ask(WorkspaceAgent &agent, const WorkspaceRequest &request)
{
    if (!agent.configured())
        return WorkspaceReply::error(409, u"Pilo isn't set up for this workspace."_s);
    if (!agent.online())
        return WorkspaceReply::error(503, u"Pilo isn't connected to Tarn yet."_s);
    const QJsonObject body = request.jsonBody().value_or(QJsonObject());
    const QString content = body.value("content"_L1).toString().trimmed();
    if (content.isEmpty())
        return WorkspaceReply::error(400, u"Write what Pilo should do."_s);
    if (content.size() > maxContent)
        return WorkspaceReply::error(400, u"A request is at most %1 characters."_s.arg(maxContent));
    const QString run = body.value("run"_L1).toString(u"fast"_s);
    if (run != "fast"_L1 && run != "process"_L1)
        return WorkspaceReply::error(400, u"The run is fast or process."_s);
    const std::optional<QString> key = optionalText(body, "request_key"_L1);
    if (key && key->size() > maxKey)
        return WorkspaceReply::error(400, u"A request key is at most %1 characters."_s.arg(maxKey));
    const WorkspaceAgent::Ask asked { .content = content,
        .page = optionalText(body, "page"_L1),
        .origin = optionalText(body, "origin"_L1),
        .run = run,
        .requestKey = key };
    return WorkspaceReply::json(QJsonObject { { u"id"_s, agent.ask(request.session().personId, asked) } });
}

WorkspaceReply resume(WorkspaceServer &server, WorkspaceAgent &agent, const WorkspaceRequest &request)
{
    const std::optional<WorkspacePerson> reviewer = server.store().person(request.session().personId);
    if (!reviewer || !reviews(*reviewer))
        return WorkspaceReply::error(403, u"Only the workspace owner reviews blocked work."_s);
    const QJsonObject body = request.jsonBody().value_or(QJsonObject());
    const QString decision = body.value("decision"_L1).toString();
    if (decision != "approve"_L1 && decision != "decline"_L1)
        return WorkspaceReply::error(400, u"The decision is approve or decline."_s);
    const QString id = request.arguments().value(0);
    const std::optional<QString> status = agent.resume(id,
        decision == "approve"_L1 ? WorkspaceAgent::Decision::Approve : WorkspaceAgent::Decision::Decline,
        body.value("reconciliation"_L1).toString().trimmed(), reviewer->name);
    if (!status)
        return WorkspaceReply::error(409, u"That request is not waiting for a review."_s);
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id }, { u"status"_s, *status } });
}

} // namespace

namespace AgentRoutes {

void add(WorkspaceServer &server)
{
    WorkspaceRouter &router = server.router();
    // The routes share the one worker; it lives as long as they do.
    auto agent = std::make_shared<WorkspaceAgent>(server.store(), server.options().agent);

    router.add(
        "GET", u"/api/agent-requests/blocked"_s, Access::Session, [&server, agent](const WorkspaceRequest &request) {
            const std::optional<WorkspacePerson> person = server.store().person(request.session().personId);
            if (!person || !reviews(*person))
                return WorkspaceReply::error(403, u"Only the workspace owner reviews blocked work."_s);
            return WorkspaceReply::json(QJsonObject { { u"requests"_s, agent->blocked() } });
        });
    router.add("GET", u"/api/agent-requests"_s, Access::Session, [agent](const WorkspaceRequest &request) {
        return WorkspaceReply::json(
            QJsonObject { { u"configured"_s, agent->configured() }, { u"online"_s, agent->online() },
                { u"requests"_s, agent->configured() ? agent->requests(request.session().personId) : QJsonArray() } });
    });
    router.add("POST", u"/api/agent-requests"_s, Access::Session,
        [agent](const WorkspaceRequest &request) { return ask(*agent, request); });
    router.add("POST", u"/api/agent-requests/:id/resume"_s, Access::Session,
        [&server, agent](const WorkspaceRequest &request) { return resume(server, *agent, request); });
    router.add("DELETE", u"/api/agent-requests/:id"_s, Access::Session, [agent](const WorkspaceRequest &request) {
        if (!agent->remove(request.session().personId, request.arguments().value(0)))
            return WorkspaceReply::error(404, u"No such request."_s);
        return WorkspaceReply::ok();
    });
    router.add("PATCH", u"/api/agent-requests/:id"_s, Access::Session, [agent](const WorkspaceRequest &request) {
        const QString title = request.jsonBody().value_or(QJsonObject()).value("title"_L1).toString().trimmed();
        if (title.isEmpty())
            return WorkspaceReply::error(400, u"Give the request a name."_s);
        if (title.size() > maxTitle)
            return WorkspaceReply::error(400, u"A name is at most %1 characters."_s.arg(maxTitle));
        if (!agent->rename(request.session().personId, request.arguments().value(0), title))
            return WorkspaceReply::error(404, u"No such request."_s);
        return WorkspaceReply::ok();
    });
}

} // namespace AgentRoutes
