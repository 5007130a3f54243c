#pragma once

#include "chat/ChatDraftFile.h"
#include "chat/TarnChatPerson.h"
#include "chat/TarnGifSearch.h"
#include "chat/TarnMessage.h"
#include "chat/TarnMessagePage.h"
#include "chat/TarnMessageSearchHit.h"
#include "chat/TarnRoom.h"
#include "chat/TarnRoomSettings.h"
#include "chat/TarnRoomSettingsUpdate.h"
#include "service/TarnCreatedID.h"
#include "service/TarnOK.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QString>

#include <optional>

class TarnAPI;

// The chat endpoints: rooms, messages, threads, reactions, saves, read
// marks, search, files and GIFs. Every id and query value is escaped by
// TarnPath.
namespace TarnChatCalls {

// The largest file a message carries or a download accepts: 5 MiB.
inline constexpr qint64 maxFileBytes = 5 * 1024 * 1024;

QCoro::Task<QList<TarnRoom>> rooms(TarnAPI &api);
QCoro::Task<QList<TarnChatPerson>> team(TarnAPI &api);
// Creating a direct room again reopens the one that exists.
QCoro::Task<TarnCreatedID> createDirectRoom(TarnAPI &api, const QString &userID);
QCoro::Task<TarnCreatedID> createChannel(
    TarnAPI &api, const QString &name, bool isPrivate, const QList<QString> &members);
QCoro::Task<TarnRoomSettings> roomSettings(TarnAPI &api, const QString &room);
QCoro::Task<TarnOK> saveRoomSettings(TarnAPI &api, const QString &room, const TarnRoomSettingsUpdate &settings);

// The newest page without `before`; with it, the page of messages older than that seq.
QCoro::Task<TarnMessagePage> messages(TarnAPI &api, const QString &room, std::optional<qint64> before = {});
QCoro::Task<TarnMessage> message(TarnAPI &api, const QString &id, const QString &room);
QCoro::Task<TarnMessagePage> replies(TarnAPI &api, const QString &parentID, const QString &room);
QCoro::Task<TarnMessage> send(TarnAPI &api, const QString &body, const QString &room, const QString &nonce,
    const std::optional<QString> &parentID = {}, const QList<ChatDraftFile> &files = {});
QCoro::Task<TarnMessage> editMessage(
    TarnAPI &api, const QString &id, const QString &room, const QString &body, qint64 version);
QCoro::Task<TarnMessage> deleteMessage(TarnAPI &api, const QString &id, const QString &room, qint64 version);
QCoro::Task<TarnMessage> reactToMessage(
    TarnAPI &api, const QString &id, const QString &room, const QString &emoji, bool active);
QCoro::Task<TarnMessage> saveMessage(TarnAPI &api, const QString &id, const QString &room, bool saved);
// The answer (which rooms changed) is not needed and not read.
QCoro::Task<> markRead(TarnAPI &api, qint64 seq, const QString &room);

QCoro::Task<QList<TarnMessageSearchHit>> searchMessages(TarnAPI &api, QString query);
QCoro::Task<QByteArray> downloadMessageFile(TarnAPI &api, const QString &id, const QString &room);

QCoro::Task<TarnGifSearch> gifs(TarnAPI &api, const QString &query);
// The small preview, or the full GIF that is sent.
QCoro::Task<QByteArray> gifData(TarnAPI &api, const QString &id, bool preview);

} // namespace TarnChatCalls
