#include "chat/NativeChatView.h"

#include "chat/ChatGifCommand.h"
#include "chat/ChatOutgoingFile.h"
#include "chat/TarnChatCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnRefreshLoop.h"
#include "shell/TarnNavigation.h"

#include <QClipboard>
#include <QCoroTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QMimeData>
#include <QPointer>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The pause between two refreshes while the screen is shown.
constexpr int refreshIntervalMs = 8000;
// Previews are fetched for at most this many rooms per refresh.
constexpr qsizetype previewsPerRefresh = 8;

QString newNonce()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

// The seq of the first unread message: the oldest of the newest `unread`
// messages by others.
std::optional<qint64> firstUnread(const QList<TarnMessage> &messages, qint64 unread, const QString &me)
{
    std::optional<qint64> first;
    for (auto it = messages.crbegin(); it != messages.crend() && unread > 0; ++it) {
        if (it->user_id == me || it->deleted_at)
            continue;
        first = it->seq;
        --unread;
    }
    return first;
}

} // namespace

NativeChatView::NativeChatView(TarnAPI &api, TarnNavigation &navigation, QSettings &preferences, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_navigation(navigation)
    , m_preferences(preferences)
    , m_rooms(new NativeChatRoomModel(this))
    , m_timeline(new NativeChatTimelineModel(this))
    , m_thread(new NativeChatTimelineModel(this))
    , m_searchHits(new NativeChatSearchModel(this))
    , m_gifPicker(new NativeGifPicker(api, this))
{
    connect(m_gifPicker, &NativeGifPicker::failed, this, &NativeChatView::fail);
    connect(m_gifPicker, &NativeGifPicker::picked, this, [this](const QString &name, const QByteArray &data) {
        gifTask(m_room, { QUuid::createUuid().toString(QUuid::WithoutBraces), name, data });
    });
    m_searchDelay.setSingleShot(true);
    m_searchDelay.setInterval(250);
    connect(&m_searchDelay, &QTimer::timeout, this, [this] { searchTask(m_search); });
    connect(&m_navigation, &TarnNavigation::chatCreateChanged, this, &NativeChatView::takeCreateRequest);
    connect(&m_navigation, &TarnNavigation::chatGenerationChanged, this, &NativeChatView::refresh);
    takeCreateRequest();
}

void NativeChatView::takeCreateRequest()
{
    const std::optional<TarnChatCreateRequest> request = m_navigation.chatCreate();
    if (!request)
        return;
    m_navigation.clearChatCreate();
    m_createMode = request->mode;
    Q_EMIT createModeChanged();
}

void NativeChatView::clearCreateMode()
{
    if (m_createMode.isEmpty())
        return;
    m_createMode.clear();
    Q_EMIT createModeChanged();
}

NativeChatView::~NativeChatView() = default;

template <typename T> QCoro::Task<std::optional<T>> NativeChatView::attempt(QCoro::Task<T> call)
{
    const QPointer<NativeChatView> self(this);
    try {
        T result = co_await std::move(call);
        co_return std::optional<T>(std::move(result));
    } catch (const TarnAPIError &error) {
        if (self) {
            fail(error);
            Q_EMIT actionFinished();
        }
    }
    co_return std::nullopt;
}

QString NativeChatView::userId() const
{
    return m_api.session() ? m_api.session()->id : QString();
}

QVariantList NativeChatView::people() const
{
    QVariantList out;
    for (const TarnChatPerson &person : m_people) {
        if (person.active && person.id != userId())
            out.append(QVariantMap { { u"id"_s, person.id }, { u"name"_s, person.name } });
    }
    return out;
}

void NativeChatView::setComposerText(const QString &text)
{
    if (m_composer == text)
        return;
    m_composer = text;
    Q_EMIT composerChanged();
}

QVariantList NativeChatView::stagedFiles() const
{
    QVariantList out;
    for (const ChatDraftFile &file : m_staged)
        out.append(QVariantMap { { u"id"_s, file.id }, { u"name"_s, file.name }, { u"size"_s, file.data.size() } });
    return out;
}

void NativeChatView::setSearchText(const QString &text)
{
    if (m_search == text)
        return;
    m_search = text;
    Q_EMIT searchTextChanged();
    if (text.trimmed().isEmpty()) {
        m_searchDelay.stop();
        m_searchHits->setRows({});
    } else {
        m_searchDelay.start();
    }
}

void NativeChatView::setCanMarkRead(bool can)
{
    if (m_canMarkRead == can)
        return;
    m_canMarkRead = can;
    Q_EMIT canMarkReadChanged();
}

void NativeChatView::setError(const QString &text)
{
    if (m_error == text)
        return;
    m_error = text;
    Q_EMIT errorTextChanged();
}

void NativeChatView::fail(const TarnAPIError &error)
{
    if (error.kind() == TarnAPIError::Kind::signedOut) {
        Q_EMIT signedOut();
        return;
    }
    setError(QString::fromUtf8(error.what()));
}

void NativeChatView::setLoading(bool loading)
{
    if (m_loading == loading)
        return;
    m_loading = loading;
    Q_EMIT loadingChanged();
}

void NativeChatView::appear()
{
    if (!m_navigation.pendingChatDraft().isEmpty()) {
        setComposerText(m_navigation.pendingChatDraft());
        m_navigation.setPendingChatDraft({});
    }
    if (!m_navigation.pendingChatSearch().isEmpty()) {
        setSearchText(m_navigation.pendingChatSearch());
        m_navigation.setPendingChatSearch({});
    }
    setLoading(true);
    TarnRefreshLoop::run(
        this, &NativeChatView::m_loopGeneration, ++m_loopGeneration, refreshIntervalMs, &NativeChatView::refreshOnce);
}

void NativeChatView::disappear()
{
    ++m_loopGeneration;
}

void NativeChatView::clear()
{
    ++m_loopGeneration;
    ++m_roomGeneration;
    m_searchDelay.stop();
    m_roomList.clear();
    m_people.clear();
    m_previews.clear();
    m_room.clear();
    m_messages.clear();
    m_newFrom.reset();
    m_hasMore = false;
    m_loadingOlder = false;
    m_threadParent.clear();
    m_replies.clear();
    m_staged.clear();
    m_sending = false;
    m_retryBody.clear();
    m_retryNonce.clear();
    m_retryRoom.clear();
    m_retrySignature.clear();
    m_composer.clear();
    m_search.clear();
    m_createMode.clear();
    m_roomSettings.clear();
    m_editingId.clear();
    m_editText.clear();
    m_selectedKind.clear();
    m_imageFiles.clear();
    m_error.clear();
    m_loading = false;
    m_gifPickerOpen = false;
    const QDateTime now = QDateTime::currentDateTime();
    m_rooms->setRows({});
    m_timeline->setMessages({}, std::nullopt, now);
    m_thread->setMessages({}, std::nullopt, now);
    m_searchHits->setRows({});
    Q_EMIT peopleChanged();
    Q_EMIT selectedRoomChanged();
    Q_EMIT threadChanged();
    Q_EMIT composerChanged();
    Q_EMIT searchTextChanged();
    Q_EMIT sendingChanged();
    Q_EMIT loadingChanged();
    Q_EMIT timelineStateChanged();
    Q_EMIT roomSettingsChanged();
    Q_EMIT errorTextChanged();
    Q_EMIT createModeChanged();
    Q_EMIT gifPickerOpenChanged();
    Q_EMIT editingChanged();
    Q_EMIT selectedKindChanged();
    Q_EMIT imageFilesChanged();
}

void NativeChatView::refresh()
{
    refreshOnce();
}

QCoro::Task<> NativeChatView::refreshOnce()
{
    const QPointer<NativeChatView> self(this);
    QList<TarnRoom> rooms;
    QList<TarnChatPerson> people;
    try {
        rooms = co_await TarnChatCalls::rooms(m_api);
        if (!self)
            co_return;
        people = co_await TarnChatCalls::team(m_api);
    } catch (const TarnAPIError &error) {
        if (self) {
            fail(error);
            setLoading(false);
            Q_EMIT refreshed();
        }
        co_return;
    }
    if (!self)
        co_return;
    m_roomList = rooms;
    if (m_people != people) {
        m_people = people;
        Q_EMIT peopleChanged();
    }
    QString room = m_room;
    if (room.isEmpty())
        room = m_preferences.value(lastRoomKey + userId()).toString();
    const bool listed = std::any_of(rooms.begin(), rooms.end(), [&room](const TarnRoom &r) { return r.id == room; });
    if (!listed)
        room = rooms.isEmpty() ? QString() : rooms.first().id;
    if (room != m_room) {
        m_room = room;
        ++m_roomGeneration;
        Q_EMIT selectedRoomChanged();
    }
    showRooms();
    if (!m_room.isEmpty())
        co_await loadRoom(m_room);
    if (!self)
        co_return;
    co_await loadPreviews(rooms);
    if (!self)
        co_return;
    if (!m_threadParent.isEmpty())
        co_await loadThread(m_room, m_threadParent);
    if (!self)
        co_return;
    setLoading(false);
    Q_EMIT refreshed();
}

// The newest message that still has something to show.
NativeChatView::Preview NativeChatView::previewOf(const QList<TarnMessage> &messages, qint64 unread)
{
    for (auto it = messages.crbegin(); it != messages.crend(); ++it) {
        if (!it->deleted_at)
            return { it->body, it->author, unread };
    }
    return { {}, {}, unread };
}

void NativeChatView::showRooms()
{
    QList<ChatRoomRow> rows;
    QString kind;
    for (const TarnRoom &room : std::as_const(m_roomList)) {
        if (room.id == m_room)
            kind = room.kind;
        if (!room.listed.value_or(true))
            continue;
        TarnRoom shown = room;
        // The open room is being read.
        if (room.id == m_room)
            shown.unread = 0;
        const Preview preview = m_previews.value(room.id);
        rows.append({ shown, preview.body, preview.author });
    }
    m_rooms->setRows(rows);
    if (kind != m_selectedKind) {
        m_selectedKind = kind;
        Q_EMIT selectedKindChanged();
    }
}

QCoro::Task<> NativeChatView::loadPreviews(QList<TarnRoom> rooms)
{
    const QPointer<NativeChatView> self(this);
    qsizetype fetched = 0;
    for (const TarnRoom &room : rooms) {
        // The open room's newest message is on screen already.
        const auto known = m_previews.constFind(room.id);
        if (room.id == m_room || fetched >= previewsPerRefresh
            || (known != m_previews.cend() && known->unread == room.unread))
            continue;
        ++fetched;
        TarnMessagePage page;
        try {
            QString id = room.id;
            std::optional<qint64> newest;
            page = co_await TarnChatCalls::messages(m_api, std::move(id), std::move(newest));
        } catch (const TarnAPIError &error) {
            if (self)
                fail(error);
            co_return;
        }
        if (!self)
            co_return;
        m_previews.insert(room.id, previewOf(page.messages, room.unread));
    }
    showRooms();
}

void NativeChatView::selectRoom(const QString &room)
{
    if (room == m_room)
        return;
    m_room = room;
    ++m_roomGeneration;
    m_messages.clear();
    m_newFrom.reset();
    m_hasMore = false;
    m_timeline->setMessages({}, std::nullopt, QDateTime::currentDateTime());
    closeThread();
    cancelEdit();
    m_preferences.setValue(lastRoomKey + userId(), room);
    Q_EMIT selectedRoomChanged();
    Q_EMIT timelineStateChanged();
    showRooms();
    loadRoom(room);
}

QCoro::Task<> NativeChatView::loadRoom(QString room)
{
    const QPointer<NativeChatView> self(this);
    const int generation = m_roomGeneration;
    TarnMessagePage page;
    try {
        QString id = room;
        std::optional<qint64> newest;
        page = co_await TarnChatCalls::messages(m_api, std::move(id), std::move(newest));
    } catch (const TarnAPIError &error) {
        if (self && generation == m_roomGeneration)
            fail(error);
        co_return;
    }
    if (!self || generation != m_roomGeneration)
        co_return;
    const auto listed
        = std::find_if(m_roomList.begin(), m_roomList.end(), [&room](const TarnRoom &r) { return r.id == room; });
    // The divider stays where it was first put while the room is open.
    if (m_messages.isEmpty() && listed != m_roomList.end())
        m_newFrom = firstUnread(page.messages, listed->unread, userId());
    // Pages already loaded in front stay.
    QList<TarnMessage> kept;
    const qint64 oldestNew = page.messages.isEmpty() ? 0 : page.messages.first().seq;
    for (const TarnMessage &m : std::as_const(m_messages)) {
        if (m.seq < oldestNew)
            kept.append(m);
    }
    const bool pagedBack = !kept.isEmpty();
    m_messages = kept + page.messages;
    if (!pagedBack)
        m_hasMore = page.has_more;
    if (!page.messages.isEmpty())
        m_previews.insert(room, previewOf(page.messages, 0));
    showMessages();
    showRooms();
    setError({});
    Q_EMIT timelineStateChanged();
    if (page.last_seq >= 1 && m_canMarkRead) {
        try {
            QString id = room;
            co_await TarnChatCalls::markRead(m_api, page.last_seq, std::move(id));
        } catch (const TarnAPIError &error) {
            if (self)
                fail(error);
        }
    }
}

void NativeChatView::showMessages()
{
    m_timeline->setMessages(m_messages, m_newFrom, QDateTime::currentDateTime());
}

void NativeChatView::loadOlder()
{
    if (m_loadingOlder || !m_hasMore || m_messages.isEmpty())
        return;
    m_loadingOlder = true;
    Q_EMIT timelineStateChanged();
    olderTask();
}

QCoro::Task<> NativeChatView::olderTask()
{
    const QPointer<NativeChatView> self(this);
    const int generation = m_roomGeneration;
    TarnMessagePage page;
    try {
        QString room = m_room;
        std::optional<qint64> before = m_messages.first().seq;
        page = co_await TarnChatCalls::messages(m_api, std::move(room), std::move(before));
    } catch (const TarnAPIError &error) {
        if (self) {
            m_loadingOlder = false;
            Q_EMIT timelineStateChanged();
            fail(error);
        }
        co_return;
    }
    if (!self)
        co_return;
    m_loadingOlder = false;
    if (generation == m_roomGeneration) {
        m_messages = page.messages + m_messages;
        m_hasMore = page.has_more;
        showMessages();
    }
    Q_EMIT timelineStateChanged();
    Q_EMIT actionFinished();
}

QString NativeChatView::signature() const
{
    QString out = m_room + u'\n' + m_composer.trimmed();
    for (const ChatDraftFile &file : m_staged)
        out += u'\n' + file.id;
    return out;
}

void NativeChatView::send()
{
    const QString body = m_composer.trimmed();
    if (m_sending || m_room.isEmpty() || (body.isEmpty() && m_staged.isEmpty()))
        return;
    if (const std::optional<QString> query = ChatGifCommand::query(body)) {
        m_gifPickerOpen = true;
        Q_EMIT gifPickerOpenChanged();
        m_gifPicker->search(*query);
        return;
    }
    // An unchanged attempt is a retry: the same nonce lets the service
    // recognise a message it already stored.
    const QString attempt = signature();
    if (m_retryNonce.isEmpty() || attempt != m_retrySignature) {
        m_retryNonce = newNonce();
        m_retrySignature = attempt;
        m_retryBody = body;
        m_retryRoom = m_room;
    }
    m_sending = true;
    Q_EMIT sendingChanged();
    Q_EMIT composerChanged();
    sendTask(m_room, body, m_retryNonce, m_staged);
}

QCoro::Task<> NativeChatView::sendTask(QString room, QString body, QString nonce, QList<ChatDraftFile> files)
{
    const QPointer<NativeChatView> self(this);
    TarnMessage sent;
    try {
        QString in = room;
        std::optional<QString> noParent;
        sent = co_await TarnChatCalls::send(
            m_api, std::move(body), std::move(in), std::move(nonce), std::move(noParent), std::move(files));
    } catch (const TarnAPIError &error) {
        if (self) {
            m_sending = false;
            Q_EMIT sendingChanged();
            fail(error);
            Q_EMIT actionFinished();
        }
        co_return;
    }
    if (!self)
        co_return;
    m_sending = false;
    m_retryNonce.clear();
    m_retrySignature.clear();
    m_retryBody.clear();
    m_retryRoom.clear();
    m_staged.clear();
    m_composer.clear();
    if (room == m_room && !shownMessage(sent.id)) {
        m_messages.append(sent);
        showMessages();
    }
    setError({});
    Q_EMIT sendingChanged();
    Q_EMIT composerChanged();
    Q_EMIT actionFinished();
}

void NativeChatView::closeGifPicker()
{
    if (!m_gifPickerOpen)
        return;
    m_gifPickerOpen = false;
    m_gifPicker->clear();
    Q_EMIT gifPickerOpenChanged();
}

void NativeChatView::openAttachment(const QString &messageId, const QString &fileId)
{
    const TarnMessage *shown = shownMessage(messageId);
    if (!shown)
        return;
    for (const TarnAttachment &file : shown->attachments) {
        if (file.id == fileId)
            openTask(m_room, file.id, file.name);
    }
}

void NativeChatView::fetchImage(const QString &messageId, const QString &fileId)
{
    const TarnMessage *shown = shownMessage(messageId);
    if (!shown || m_imageFiles.contains(fileId))
        return;
    for (const TarnAttachment &file : shown->attachments) {
        if (file.id == fileId && file.mime.value_or(QString()).startsWith("image/"_L1)) {
            m_imageFiles.insert(fileId, QString());
            imageTask(m_room, file.id, file.name);
        }
    }
}

QCoro::Task<> NativeChatView::openTask(QString room, QString fileId, QString name)
{
    const QPointer<NativeChatView> self(this);
    const std::optional<QUrl> saved = co_await downloadTask(std::move(room), std::move(fileId), std::move(name));
    if (!self)
        co_return;
    if (saved)
        Q_EMIT attachmentReady(*saved);
    Q_EMIT actionFinished();
}

QCoro::Task<> NativeChatView::imageTask(QString room, QString fileId, QString name)
{
    const QPointer<NativeChatView> self(this);
    const std::optional<QUrl> saved = co_await downloadTask(std::move(room), fileId, std::move(name));
    if (!self)
        co_return;
    // A failed one may be asked for again when its row is drawn again.
    if (saved)
        m_imageFiles.insert(fileId, saved->toString());
    else
        m_imageFiles.remove(fileId);
    Q_EMIT imageFilesChanged();
}

QCoro::Task<std::optional<QUrl>> NativeChatView::downloadTask(QString room, QString fileId, QString name)
{
    const QPointer<NativeChatView> self(this);
    QByteArray bytes;
    try {
        QString id = fileId;
        QString in = room;
        bytes = co_await TarnChatCalls::downloadMessageFile(m_api, std::move(id), std::move(in));
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
        co_return std::nullopt;
    }
    if (!self)
        co_return std::nullopt;
    // The service's name, without any folders in it, in a folder of the
    // file's own so that two files of one name never meet.
    const QString base = QFileInfo(name).fileName();
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/chat-files/"_s
        + QString::fromLatin1(QUrl::toPercentEncoding(fileId)));
    QSaveFile out(folder.filePath(base.isEmpty() || base == ".."_L1 ? u"file"_s : base));
    if (!folder.mkpath(u"."_s) || !out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size()
        || !out.commit()) {
        setError(u"“%1” could not be saved: %2"_s.arg(name, out.errorString()));
        co_return std::nullopt;
    }
    co_return QUrl::fromLocalFile(out.fileName());
}

// A picked GIF goes alone; the staged files wait for the next message.
QCoro::Task<> NativeChatView::gifTask(QString room, ChatDraftFile gif)
{
    const QPointer<NativeChatView> self(this);
    QCoro::Task<TarnMessage> call = TarnChatCalls::send(m_api, QString(), room, newNonce(), std::nullopt, { gif });
    const std::optional<TarnMessage> sent = co_await attempt(std::move(call));
    if (!self || !sent)
        co_return;
    if (room == m_room && !shownMessage(sent->id)) {
        m_messages.append(*sent);
        showMessages();
    }
    setComposerText({});
    closeGifPicker();
    setError({});
    Q_EMIT actionFinished();
}

bool NativeChatView::stageFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        setError(u"“%1” could not be read."_s.arg(QFileInfo(path).fileName()));
        return false;
    }
    // Only an image is worth reading whole when it is over the limit (to be
    // shrunk); of anything else one byte too many is enough to refuse it.
    const bool image = QImageReader(&file).canRead();
    file.seek(0);
    const QByteArray data = file.size() > TarnChatCalls::maxFileBytes && !image
        ? file.read(TarnChatCalls::maxFileBytes + 1)
        : file.readAll();
    return stage(ChatOutgoingFile::prepare(QFileInfo(path).fileName(), data));
}

bool NativeChatView::stageImage(const QImage &image)
{
    return stage(ChatOutgoingFile::prepareImage(image));
}

bool NativeChatView::stageMime(const QMimeData &data)
{
    if (data.hasUrls()) {
        const QList<QUrl> urls = data.urls();
        if (std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); })) {
            stageUrls(urls);
            return true;
        }
    }
    if (!data.hasImage())
        return false;
    stageImage(qvariant_cast<QImage>(data.imageData()));
    return true;
}

bool NativeChatView::pasteFiles()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data && stageMime(*data);
}

int NativeChatView::stageUrls(const QList<QUrl> &urls)
{
    int staged = 0;
    for (const QUrl &url : urls) {
        if (url.isLocalFile() && stageFile(url.toLocalFile()))
            ++staged;
    }
    return staged;
}

bool NativeChatView::stage(const std::variant<ChatDraftFile, QString> &outcome)
{
    if (const QString *refusal = std::get_if<QString>(&outcome)) {
        setError(*refusal);
        return false;
    }
    m_staged.append(std::get<ChatDraftFile>(outcome));
    Q_EMIT composerChanged();
    return true;
}

void NativeChatView::unstageFile(const QString &id)
{
    m_staged.removeIf([&id](const ChatDraftFile &file) { return file.id == id; });
    Q_EMIT composerChanged();
}

const TarnMessage *NativeChatView::shownMessage(const QString &id) const
{
    for (const TarnMessage &m : m_messages) {
        if (m.id == id)
            return &m;
    }
    for (const TarnMessage &m : m_replies) {
        if (m.id == id)
            return &m;
    }
    return nullptr;
}

void NativeChatView::replaceMessage(const TarnMessage &message)
{
    for (QList<TarnMessage> *list : { &m_messages, &m_replies }) {
        for (TarnMessage &m : *list) {
            if (m.id == message.id)
                m = message;
        }
    }
    showMessages();
    m_thread->setMessages(m_replies, std::nullopt, QDateTime::currentDateTime());
}

void NativeChatView::openThread(const QString &messageId)
{
    m_threadParent = messageId;
    m_replies.clear();
    m_thread->setMessages({}, std::nullopt, QDateTime::currentDateTime());
    Q_EMIT threadChanged();
    loadThread(m_room, messageId);
}

void NativeChatView::closeThread()
{
    if (m_threadParent.isEmpty())
        return;
    m_threadParent.clear();
    m_replies.clear();
    m_thread->setMessages({}, std::nullopt, QDateTime::currentDateTime());
    Q_EMIT threadChanged();
}

QCoro::Task<> NativeChatView::loadThread(QString room, QString parent)
{
    const QPointer<NativeChatView> self(this);
    TarnMessagePage page;
    TarnMessage first;
    try {
        QString id = parent;
        QString in = room;
        page = co_await TarnChatCalls::replies(m_api, std::move(id), std::move(in));
        if (!self)
            co_return;
        QString again = parent;
        QString inAgain = room;
        first = co_await TarnChatCalls::message(m_api, std::move(again), std::move(inAgain));
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
        co_return;
    }
    if (!self || parent != m_threadParent || room != m_room)
        co_return;
    m_replies = page.messages;
    // The parent's reply count follows the thread.
    replaceMessage(first);
    Q_EMIT actionFinished();
}

void NativeChatView::sendReply(const QString &text)
{
    if (m_threadParent.isEmpty() || text.trimmed().isEmpty())
        return;
    replyTask(m_room, m_threadParent, text.trimmed());
}

QCoro::Task<> NativeChatView::replyTask(QString room, QString parent, QString body)
{
    const QPointer<NativeChatView> self(this);
    QCoro::Task<TarnMessage> call = TarnChatCalls::send(m_api, body, room, newNonce(), parent);
    const std::optional<TarnMessage> sent = co_await attempt(std::move(call));
    if (self && sent)
        co_await loadThread(room, parent);
}

QStringList NativeChatView::quickReactions()
{
    return { u"👍"_s, u"❤️"_s, u"😂"_s, u"🎉"_s, u"😮"_s, u"😢"_s, u"🙏"_s, u"👀"_s };
}

void NativeChatView::setEditText(const QString &text)
{
    if (m_editText == text)
        return;
    m_editText = text;
    Q_EMIT editingChanged();
}

void NativeChatView::beginEdit(const QString &id)
{
    const TarnMessage *shown = shownMessage(id);
    if (!shown || shown->user_id != userId() || shown->deleted_at)
        return;
    m_editingId = id;
    m_editText = shown->body;
    Q_EMIT editingChanged();
}

void NativeChatView::cancelEdit()
{
    if (m_editingId.isEmpty())
        return;
    m_editingId.clear();
    m_editText.clear();
    Q_EMIT editingChanged();
}

void NativeChatView::saveEdit()
{
    const TarnMessage *shown = shownMessage(m_editingId);
    const QString body = m_editText.trimmed();
    if (!shown || body.isEmpty())
        return;
    if (body == shown->body) {
        cancelEdit();
        return;
    }
    editTask(m_editingId, TarnChatCalls::editMessage(m_api, m_editingId, m_room, body, shown->version.value_or(0)));
}

QCoro::Task<> NativeChatView::editTask(QString id, QCoro::Task<TarnMessage> call)
{
    const QPointer<NativeChatView> self(this);
    const std::optional<TarnMessage> edited = co_await attempt(std::move(call));
    if (!self || !edited)
        co_return;
    replaceMessage(*edited);
    if (m_editingId == id)
        cancelEdit();
    setError({});
    Q_EMIT actionFinished();
}

void NativeChatView::deleteMessage(const QString &id)
{
    if (const TarnMessage *shown = shownMessage(id))
        replaceTask(TarnChatCalls::deleteMessage(m_api, id, m_room, shown->version.value_or(0)));
}

void NativeChatView::toggleReaction(const QString &id, const QString &emoji)
{
    const TarnMessage *shown = shownMessage(id);
    if (!shown)
        return;
    const QList<TarnReaction> reactions = shown->reactions.value_or(QList<TarnReaction>());
    const bool mine = std::any_of(
        reactions.begin(), reactions.end(), [&emoji](const TarnReaction &r) { return r.emoji == emoji && r.mine; });
    replaceTask(TarnChatCalls::reactToMessage(m_api, id, m_room, emoji, !mine));
}

void NativeChatView::toggleSaved(const QString &id)
{
    if (const TarnMessage *shown = shownMessage(id))
        replaceTask(TarnChatCalls::saveMessage(m_api, id, m_room, !shown->saved.value_or(false)));
}

QCoro::Task<> NativeChatView::replaceTask(QCoro::Task<TarnMessage> call)
{
    const QPointer<NativeChatView> self(this);
    const std::optional<TarnMessage> changed = co_await attempt(std::move(call));
    if (!self || !changed)
        co_return;
    replaceMessage(*changed);
    setError({});
    Q_EMIT actionFinished();
}

QCoro::Task<> NativeChatView::searchTask(QString text)
{
    const QPointer<NativeChatView> self(this);
    QCoro::Task<QList<TarnMessageSearchHit>> call = TarnChatCalls::searchMessages(m_api, text);
    const std::optional<QList<TarnMessageSearchHit>> hits = co_await attempt(std::move(call));
    // A newer search text has its own answer coming.
    if (!self || !hits || text != m_search)
        co_return;
    m_searchHits->setRows(*hits);
    Q_EMIT actionFinished();
}

void NativeChatView::openSearchHit(int row)
{
    if (row < 0 || row >= m_searchHits->rows().size())
        return;
    const TarnMessageSearchHit hit = m_searchHits->rows().at(row);
    selectRoom(hit.room_id);
    if (hit.parent_id)
        openThread(*hit.parent_id);
}

void NativeChatView::createDirectMessage(const QString &personId)
{
    if (!personId.isEmpty())
        createTask(TarnChatCalls::createDirectRoom(m_api, personId));
}

void NativeChatView::createChannel(const QString &name, bool isPrivate, const QStringList &members)
{
    if (name.trimmed().isEmpty()) {
        setError(u"A channel needs a name."_s);
        return;
    }
    createTask(TarnChatCalls::createChannel(m_api, name.trimmed(), isPrivate, members));
}

QCoro::Task<> NativeChatView::createTask(QCoro::Task<TarnCreatedID> call)
{
    const QPointer<NativeChatView> self(this);
    const std::optional<TarnCreatedID> created = co_await attempt(std::move(call));
    if (!self || !created)
        co_return;
    m_preferences.setValue(lastRoomKey + userId(), created->id);
    selectRoom(created->id);
    co_await refreshOnce();
    if (self)
        Q_EMIT actionFinished();
}

void NativeChatView::loadRoomSettings()
{
    if (!m_room.isEmpty())
        settingsTask(m_room);
}

QCoro::Task<> NativeChatView::settingsTask(QString room)
{
    const QPointer<NativeChatView> self(this);
    QCoro::Task<TarnRoomSettings> call = TarnChatCalls::roomSettings(m_api, room);
    const std::optional<TarnRoomSettings> loaded = co_await attempt(std::move(call));
    if (!self || !loaded || room != m_room)
        co_return;
    const TarnRoomSettings &settings = *loaded;
    m_roomSettings = QVariantMap { { u"id"_s, settings.id }, { u"name"_s, settings.name }, { u"kind"_s, settings.kind },
        { u"private"_s, settings.private_ }, { u"archived"_s, settings.archived },
        { u"members"_s, QStringList(settings.members) } };
    Q_EMIT roomSettingsChanged();
    Q_EMIT actionFinished();
}

void NativeChatView::saveRoomSettings(const QString &name, bool isPrivate, bool archived, const QStringList &chosen)
{
    if (m_room.isEmpty() || m_roomSettings.value(u"id"_s).toString() != m_room)
        return;
    if (name.trimmed().isEmpty()) {
        setError(u"A channel needs a name."_s);
        return;
    }
    QStringList members = chosen;
    const QVariantList offered = people();
    for (const QString &member : m_roomSettings.value(u"members"_s).toStringList()) {
        const bool isOffered = std::any_of(offered.begin(), offered.end(),
            [&member](const QVariant &person) { return person.toMap().value(u"id"_s) == member; });
        if (!isOffered && !members.contains(member))
            members.append(member);
    }
    saveSettingsTask(m_room, { name.trimmed(), isPrivate, archived, members });
}

QCoro::Task<> NativeChatView::saveSettingsTask(QString room, TarnRoomSettingsUpdate update)
{
    const QPointer<NativeChatView> self(this);
    QCoro::Task<TarnOK> call = TarnChatCalls::saveRoomSettings(m_api, room, update);
    const std::optional<TarnOK> saved = co_await attempt(std::move(call));
    if (!self || !saved)
        co_return;
    co_await refreshOnce();
    if (self)
        Q_EMIT actionFinished();
}
