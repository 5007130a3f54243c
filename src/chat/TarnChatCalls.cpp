#include "chat/TarnChatCalls.h"

#include "chat/TarnMessageEdit.h"
#include "chat/TarnMessageSearch.h"
#include "chat/TarnMessageSend.h"
#include "chat/TarnReactionChange.h"
#include "chat/TarnReadMark.h"
#include "chat/TarnRoomCreate.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace {

TarnPath roomPath(const QString &room)
{
    return TarnPath(u"/api/rooms"_s).id(room);
}

TarnPath messagePath(const QString &room, const QString &id)
{
    return roomPath(room).segment("messages"_L1).id(id);
}

} // namespace

namespace TarnChatCalls {

QCoro::Task<QList<TarnRoom>> rooms(TarnAPI &api)
{
    return api.request<QList<TarnRoom>>(TarnPath(u"/api/rooms"_s));
}

QCoro::Task<QList<TarnChatPerson>> team(TarnAPI &api)
{
    return api.request<QList<TarnChatPerson>>(TarnPath(u"/api/team"_s));
}

QCoro::Task<TarnCreatedID> createDirectRoom(TarnAPI &api, const QString &userID)
{
    return api.request<TarnCreatedID>(
        TarnPath(u"/api/rooms"_s), TarnMethod::Post, TarnRoomCreate { .kind = u"dm"_s, .user_id = userID });
}

QCoro::Task<TarnCreatedID> createChannel(
    TarnAPI &api, const QString &name, bool isPrivate, const QList<QString> &members)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/rooms"_s), TarnMethod::Post,
        TarnRoomCreate { .kind = u"channel"_s, .name = name, .private_ = isPrivate, .members = members });
}

QCoro::Task<TarnRoomSettings> roomSettings(TarnAPI &api, const QString &room)
{
    return api.request<TarnRoomSettings>(roomPath(room));
}

QCoro::Task<TarnOK> saveRoomSettings(TarnAPI &api, const QString &room, const TarnRoomSettingsUpdate &settings)
{
    return api.request<TarnOK>(roomPath(room), TarnMethod::Patch, settings);
}

QCoro::Task<TarnMessagePage> messages(TarnAPI &api, const QString &room, std::optional<qint64> before)
{
    const std::optional<QString> cursor = before ? std::optional(QString::number(*before)) : std::nullopt;
    return api.request<TarnMessagePage>(roomPath(room).segment("messages"_L1).query("before"_L1, cursor));
}

QCoro::Task<TarnMessage> message(TarnAPI &api, const QString &id, const QString &room)
{
    return api.request<TarnMessage>(messagePath(room, id));
}

QCoro::Task<TarnMessagePage> replies(TarnAPI &api, const QString &parentID, const QString &room)
{
    return api.request<TarnMessagePage>(roomPath(room).segment("messages"_L1).query("parent"_L1, parentID));
}

QCoro::Task<TarnMessage> send(TarnAPI &api, const QString &body, const QString &room, const QString &nonce,
    const std::optional<QString> &parentID, const QList<ChatDraftFile> &files)
{
    return api.request<TarnMessage>(roomPath(room).segment("messages"_L1), TarnMethod::Post,
        TarnMessageSend { .body = body, .nonce = nonce, .attachments = files, .parent_id = parentID });
}

QCoro::Task<TarnMessage> editMessage(
    TarnAPI &api, const QString &id, const QString &room, const QString &body, qint64 version)
{
    return api.request<TarnMessage>(
        messagePath(room, id), TarnMethod::Patch, TarnMessageEdit { .body = body, .version = version });
}

QCoro::Task<TarnMessage> deleteMessage(TarnAPI &api, const QString &id, const QString &room, qint64 version)
{
    return api.request<TarnMessage>(messagePath(room, id), TarnMethod::Delete, TarnMessageEdit { .version = version });
}

QCoro::Task<TarnMessage> reactToMessage(
    TarnAPI &api, const QString &id, const QString &room, const QString &emoji, bool active)
{
    return api.request<TarnMessage>(messagePath(room, id).segment("reactions"_L1), TarnMethod::Post,
        TarnReactionChange { .emoji = emoji, .active = active });
}

QCoro::Task<TarnMessage> saveMessage(TarnAPI &api, const QString &id, const QString &room, bool saved)
{
    return api.request<TarnMessage>(
        messagePath(room, id).segment("save"_L1), saved ? TarnMethod::Post : TarnMethod::Delete);
}

QCoro::Task<> markRead(TarnAPI &api, qint64 seq, const QString &room)
{
    return api.request<void>(roomPath(room).segment("read"_L1), TarnMethod::Post, TarnReadMark { .seq = seq });
}

QCoro::Task<QList<TarnMessageSearchHit>> searchMessages(TarnAPI &api, QString query)
{
    TarnPath path = TarnPath(u"/api/rooms"_s).query("search"_L1, query);
    const TarnMessageSearch found = co_await api.request<TarnMessageSearch>(std::move(path));
    co_return QList<TarnMessageSearchHit>(found.results);
}

QCoro::Task<QByteArray> downloadMessageFile(TarnAPI &api, const QString &id, const QString &room)
{
    return api.downloadFile(roomPath(room).segment("files"_L1).id(id), maxFileBytes);
}

QCoro::Task<TarnGifSearch> gifs(TarnAPI &api, const QString &query)
{
    return api.request<TarnGifSearch>(TarnPath(u"/api/gifs"_s).query("q"_L1, query));
}

QCoro::Task<QByteArray> gifData(TarnAPI &api, const QString &id, bool preview)
{
    return api.downloadFile(TarnPath(u"/api/gifs"_s).id(id).segment(preview ? "preview"_L1 : "file"_L1), maxFileBytes);
}

} // namespace TarnChatCalls
