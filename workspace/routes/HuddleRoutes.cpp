#include "workspace/routes/HuddleRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceResponder.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/ChatStore.h"
#include "workspace/routes/HuddleHub.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

const QString &me(const WorkspaceRequest &request)
{
    return request.session().personId;
}

const QString &room(const WorkspaceRequest &request)
{
    return request.arguments().at(0);
}

// The body when it is an object whose "sid" is a string.
std::optional<QJsonObject> withSid(const WorkspaceRequest &request)
{
    std::optional<QJsonObject> body = request.jsonBody();
    if (!body || !body->value("sid"_L1).isString())
        return std::nullopt;
    return body;
}

WorkspaceReply sidMissing()
{
    return WorkspaceReply::error(400, u"A huddle request needs the \"sid\" that joining gave."_s);
}

} // namespace

namespace HuddleRoutes {

void add(WorkspaceServer &server)
{
    // Read only: the chat routes own the tables.
    const auto chat = std::make_shared<ChatStore>(
        server.store().database().connectionName(), QDir(server.options().dataDir).filePath(u"chat-files"_s));
    QJsonArray ice;
    for (const QString &url : server.options().iceServers)
        ice.append(QJsonObject { { u"urls"_s, QJsonArray { url } } });
    const HuddleHub::RoomFor roomFor = [chat](const QString &person, const QString &id) -> std::optional<QString> {
        const ChatStore::Result<QJsonObject> settings = chat->settings(person, id);
        if (const QJsonObject *room = std::get_if<QJsonObject>(&settings))
            return room->value("name"_L1).toString();
        return std::nullopt;
    };
    const HuddleHub::NameOf nameOf = [&server](const QString &person) {
        const std::optional<WorkspacePerson> found = server.store().person(person);
        return found ? found->name : person;
    };
    // Owned by the server, which outlives its routes' calls.
    auto *hub
        = new HuddleHub({ ice, server.options().huddleDropSeconds * 1000, server.store().database().connectionName() },
            roomFor, nameOf, &server);

    WorkspaceRouter &router = server.router();

    router.add("POST", u"/api/rooms/:room/huddle/join"_s, Access::Session, [hub](const WorkspaceRequest &request) {
        const QJsonObject body = request.jsonBody().value_or(QJsonObject());
        const QJsonValue invite = body.value("invite"_L1);
        if (!invite.isUndefined() && !invite.isArray())
            return WorkspaceReply::error(400, u"\"invite\" is a list of user ids."_s);
        QStringList people;
        for (const QJsonValue &person : invite.toArray())
            people.append(person.toString());
        return hub->join(me(request), room(request), people);
    });

    router.add("POST", u"/api/rooms/:room/huddle/leave"_s, Access::Session, [hub](const WorkspaceRequest &request) {
        const std::optional<QJsonObject> body = withSid(request);
        return body ? hub->leave(me(request), room(request), body->value("sid"_L1).toString()) : sidMissing();
    });

    router.add("POST", u"/api/rooms/:room/huddle/state"_s, Access::Session, [hub](const WorkspaceRequest &request) {
        const std::optional<QJsonObject> body = withSid(request);
        return body ? hub->mark(me(request), room(request), body->value("sid"_L1).toString(), *body) : sidMissing();
    });

    router.add("POST", u"/api/rooms/:room/huddle/signal"_s, Access::Session, [hub](const WorkspaceRequest &request) {
        const std::optional<QJsonObject> body = withSid(request);
        if (!body)
            return sidMissing();
        const QString type = body->value("type"_L1).toString();
        if (!QStringList { u"offer"_s, u"answer"_s, u"ice"_s }.contains(type) || !body->value("data"_L1).isObject()
            || !body->value("to_conn"_L1).isString())
            return WorkspaceReply::error(
                400, u"A signal needs \"to_conn\", a \"type\" (offer, answer or ice) and a \"data\" object."_s);
        return hub->signal(me(request), room(request), body->value("sid"_L1).toString(),
            body->value("to_conn"_L1).toString(), type, body->value("data"_L1).toObject());
    });

    router.addHeld("POST", u"/api/rooms/:room/huddle/poll"_s, Access::Session,
        [hub](const WorkspaceRequest &request, WorkspaceResponder &&responder) {
            const std::optional<QJsonObject> body = withSid(request);
            if (!body) {
                responder.send(sidMissing());
                return;
            }
            const QJsonValue wait = body->value("wait"_L1);
            if (!body->value("after"_L1).isDouble() || !body->value("version"_L1).isDouble()
                || !(wait.isUndefined() || wait.isDouble())) {
                responder.send(
                    WorkspaceReply::error(400, u"A poll's \"after\", \"version\" and \"wait\" are numbers."_s));
                return;
            }
            hub->poll(me(request), room(request), body->value("sid"_L1).toString(), body->value("after"_L1).toInteger(),
                body->value("version"_L1).toInteger(), int(wait.toDouble(15) * 1000), std::move(responder));
        });

    router.add("GET", u"/api/huddles"_s, Access::Session, [hub](const WorkspaceRequest &request) {
        return WorkspaceReply::json(QJsonObject { { u"huddles"_s, hub->visible(me(request)) } });
    });
}

} // namespace HuddleRoutes
