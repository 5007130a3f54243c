#include "workspace/routes/ChatRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/ChatSeed.h"
#include "workspace/routes/ChatStore.h"

#include <QDir>
#include <QSqlDatabase>

#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;
using Refusal = ChatStore::Refusal;

template <typename T> WorkspaceReply answer(const ChatStore::Result<T> &result)
{
    if (const Refusal *refusal = std::get_if<Refusal>(&result))
        return WorkspaceReply::error(refusal->status, refusal->message);
    if constexpr (std::is_same_v<T, QJsonObject>)
        return WorkspaceReply::json(std::get<QJsonObject>(result));
    else if constexpr (std::is_same_v<T, QString>)
        return WorkspaceReply::json(QJsonObject { { u"id"_s, std::get<QString>(result) } });
    else
        return WorkspaceReply::ok();
}

QStringList strings(const QJsonValue &value)
{
    QStringList out;
    for (const QJsonValue &item : value.toArray())
        out.append(item.toString());
    return out;
}

const QString &me(const WorkspaceRequest &request)
{
    return request.session().personId;
}

// The body's files, each {"name", "data" in base64}; nothing when one is malformed.
std::optional<QList<ChatStore::File>> filesIn(const QJsonObject &body)
{
    QList<ChatStore::File> files;
    for (const QJsonValue &item : body.value("attachments"_L1).toArray()) {
        const QJsonObject file = item.toObject();
        const QByteArray::FromBase64Result data = QByteArray::fromBase64Encoding(
            file.value("data"_L1).toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        if (!data || !file.value("name"_L1).isString())
            return std::nullopt;
        files.append({ file.value("name"_L1).toString(), *data });
    }
    return files;
}

WorkspaceReply send(ChatStore &chat, const QString &author, const WorkspaceRequest &request, bool withNonce)
{
    const std::optional<QJsonObject> body = request.jsonBody();
    if (!body || !body->value("body"_L1).isString())
        return WorkspaceReply::error(400, u"A message is a JSON object with a \"body\"."_s);
    const std::optional<QList<ChatStore::File>> files = filesIn(*body);
    if (!files)
        return WorkspaceReply::error(400, u"Each attachment needs a \"name\" and base64 \"data\"."_s);
    const QString nonce = body->value("nonce"_L1).toString();
    if (withNonce && nonce.isEmpty())
        return WorkspaceReply::error(400, u"A message needs a \"nonce\"."_s);
    const QJsonValue parent = body->value("parent_id"_L1);
    ChatStore::NewMessage message { .room = request.arguments().at(0),
        .author = author,
        .body = body->value("body"_L1).toString(),
        .nonce = withNonce ? std::optional(nonce) : std::nullopt,
        .parentId = parent.isString() ? std::optional(parent.toString()) : std::nullopt,
        .files = *files,
        .createdAtMs = std::nullopt };
    return answer(chat.send(message));
}

} // namespace

namespace ChatRoutes {

bool add(WorkspaceServer &server, QString *error)
{
    // Shared by the routes, which live as long as the server.
    const auto chat = std::make_shared<ChatStore>(
        server.store().database().connectionName(), QDir(server.options().dataDir).filePath(u"chat-files"_s));
    if (!chat->createSchema()) {
        *error = u"could not create the chat tables"_s;
        return false;
    }
    // Also a data folder made before there was chat gets the demo's rooms.
    if (!chat->hasRooms()) {
        QSqlDatabase db = server.store().database();
        db.transaction();
        if (!ChatSeed::plant(*chat)) {
            db.rollback();
            *error = u"could not plant the demo chat"_s;
            return false;
        }
        db.commit();
    }

    WorkspaceRouter &router = server.router();

    router.add("GET", u"/api/team"_s, Access::Session,
        [chat](const WorkspaceRequest &) { return WorkspaceReply::json(chat->team()); });

    // The room list, or with "search" the search across rooms.
    router.add("GET", u"/api/rooms"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        if (request.hasQuery(u"search"_s))
            return WorkspaceReply::json(
                QJsonObject { { u"results"_s, chat->search(me(request), request.query(u"search"_s)) } });
        return WorkspaceReply::json(chat->rooms(me(request)));
    });

    router.add("POST", u"/api/rooms"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        const QJsonObject body = request.jsonBody().value_or(QJsonObject());
        const QString kind = body.value("kind"_L1).toString();
        if (kind == "dm"_L1)
            return answer(chat->createDirectRoom(me(request), body.value("user_id"_L1).toString()));
        if (kind == "channel"_L1)
            return answer(chat->createChannel(me(request), body.value("name"_L1).toString(),
                body.value("private"_L1).toBool(), strings(body.value("members"_L1))));
        return WorkspaceReply::error(400, u"A room's \"kind\" is \"dm\" or \"channel\"."_s);
    });

    router.add("GET", u"/api/rooms/:room"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        return answer(chat->settings(me(request), request.arguments().at(0)));
    });

    router.add("PATCH", u"/api/rooms/:room"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        const std::optional<QJsonObject> body = request.jsonBody();
        if (!body || !body->value("name"_L1).isString() || !body->value("private"_L1).isBool()
            || !body->value("archived"_L1).isBool() || !body->value("members"_L1).isArray())
            return WorkspaceReply::error(400, u"Settings need \"name\", \"private\", \"archived\" and \"members\"."_s);
        return answer(chat->saveSettings(me(request), request.arguments().at(0), body->value("name"_L1).toString(),
            body->value("private"_L1).toBool(), body->value("archived"_L1).toBool(),
            strings(body->value("members"_L1))));
    });

    router.add("GET", u"/api/rooms/:room/messages"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        std::optional<qint64> before;
        if (request.hasQuery(u"before"_s)) {
            bool number = false;
            before = request.query(u"before"_s).toLongLong(&number);
            if (!number)
                return WorkspaceReply::error(400, u"\"before\" is a sequence number."_s);
        }
        const std::optional<QString> parent
            = request.hasQuery(u"parent"_s) ? std::optional(request.query(u"parent"_s)) : std::nullopt;
        return answer(chat->page(me(request), request.arguments().at(0), before, parent));
    });

    router.add(
        "POST", u"/api/rooms/:room/messages"_s, Access::Session,
        [chat](const WorkspaceRequest &request) { return send(*chat, me(request), request, true); },
        WorkspaceLimits::mailBodyBytes);

    router.add("GET", u"/api/rooms/:room/messages/:id"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        return answer(chat->message(me(request), request.arguments().at(0), request.arguments().at(1)));
    });

    // Edits carry a body, deletions none; both the version they were made on.
    const auto change = [chat](const WorkspaceRequest &request, bool deleting) {
        const std::optional<QJsonObject> body = request.jsonBody();
        if (!body || !body->value("version"_L1).isDouble() || (!deleting && !body->value("body"_L1).isString()))
            return WorkspaceReply::error(
                400, u"A change needs the message's \"version\" (and an edit its \"body\")."_s);
        const std::optional<QString> text = deleting ? std::nullopt : std::optional(body->value("body"_L1).toString());
        return answer(chat->edit(me(request), request.arguments().at(0), request.arguments().at(1), text,
            body->value("version"_L1).toInteger()));
    };
    router.add("PATCH", u"/api/rooms/:room/messages/:id"_s, Access::Session,
        [change](const WorkspaceRequest &request) { return change(request, false); });
    router.add("DELETE", u"/api/rooms/:room/messages/:id"_s, Access::Session,
        [change](const WorkspaceRequest &request) { return change(request, true); });

    router.add(
        "POST", u"/api/rooms/:room/messages/:id/reactions"_s, Access::Session, [chat](const WorkspaceRequest &request) {
            const std::optional<QJsonObject> body = request.jsonBody();
            if (!body || !body->value("emoji"_L1).isString() || !body->value("active"_L1).isBool())
                return WorkspaceReply::error(400, u"A reaction needs \"emoji\" and \"active\"."_s);
            return answer(chat->react(me(request), request.arguments().at(0), request.arguments().at(1),
                body->value("emoji"_L1).toString(), body->value("active"_L1).toBool()));
        });

    for (const QByteArray &method : { "POST"_ba, "DELETE"_ba }) {
        const bool saving = method == "POST";
        router.add(method, u"/api/rooms/:room/messages/:id/save"_s, Access::Session,
            [chat, saving](const WorkspaceRequest &request) {
                return answer(chat->save(me(request), request.arguments().at(0), request.arguments().at(1), saving));
            });
    }

    router.add("POST", u"/api/rooms/:room/read"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        const std::optional<QJsonObject> body = request.jsonBody();
        if (!body || !body->value("seq"_L1).isDouble())
            return WorkspaceReply::error(400, u"A read mark needs \"seq\"."_s);
        return answer(chat->markRead(me(request), request.arguments().at(0), body->value("seq"_L1).toInteger()));
    });

    router.add("GET", u"/api/rooms/:room/files/:id"_s, Access::Session, [chat](const WorkspaceRequest &request) {
        const ChatStore::Result<ChatStore::File> file
            = chat->file(me(request), request.arguments().at(0), request.arguments().at(1));
        if (const Refusal *refusal = std::get_if<Refusal>(&file))
            return WorkspaceReply::error(refusal->status, refusal->message);
        return WorkspaceReply { 200, "application/octet-stream"_ba, std::get<ChatStore::File>(file).data, {} };
    });

    if (server.options().testFaults) {
        router.add(
            "POST", u"/api/test/rooms/:room/messages"_s, Access::Public,
            [chat](const WorkspaceRequest &request) {
                const QString author = request.jsonBody().value_or(QJsonObject()).value("user_id"_L1).toString();
                return send(*chat, author, request, false);
            },
            WorkspaceLimits::mailBodyBytes);
    }
    return true;
}

} // namespace ChatRoutes
