#pragma once

#include "chat/ChatDraftFile.h"
#include "chat/NativeChatRoomModel.h"
#include "chat/NativeChatSearchModel.h"
#include "chat/NativeChatTimelineModel.h"
#include "chat/NativeGifPicker.h"
#include "chat/TarnChatPerson.h"
#include "chat/TarnMessage.h"
#include "chat/TarnRoom.h"
#include "chat/TarnRoomSettingsUpdate.h"
#include "service/TarnCreatedID.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>

#include <optional>
#include <variant>

class QImage;
class QMimeData;
class QSettings;
class TarnAPI;
class TarnAPIError;
class TarnNavigation;

// The chat screen: the room list with previews, the selected room's
// timeline (paged back on demand), the composer with staged files and a
// send that can be retried without posting twice, threads, reactions,
// saves, search across rooms, and creating and setting up rooms. It loads
// when it appears and refreshes every 8 seconds while shown; a refresh
// that changes nothing changes no row. Every failure keeps what is shown
// and says why in `errorText`; a signed-out answer emits `signedOut`.
class NativeChatView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeChatRoomModel *rooms READ rooms CONSTANT)
    Q_PROPERTY(NativeChatTimelineModel *timeline READ timeline CONSTANT)
    Q_PROPERTY(NativeChatTimelineModel *thread READ thread CONSTANT)
    Q_PROPERTY(NativeChatSearchModel *searchHits READ searchHits CONSTANT)
    Q_PROPERTY(QVariantList people READ people NOTIFY peopleChanged)
    Q_PROPERTY(QString selectedRoom READ selectedRoom NOTIFY selectedRoomChanged)
    Q_PROPERTY(QString threadParent READ threadParent NOTIFY threadChanged)
    Q_PROPERTY(QString composerText READ composerText WRITE setComposerText NOTIFY composerChanged)
    Q_PROPERTY(QVariantList stagedFiles READ stagedFiles NOTIFY composerChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(bool sending READ sending NOTIFY sendingChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY loadingChanged)
    Q_PROPERTY(bool hasMore READ hasMore NOTIFY timelineStateChanged)
    Q_PROPERTY(bool loadingOlder READ loadingOlder NOTIFY timelineStateChanged)
    Q_PROPERTY(QVariantMap roomSettings READ roomSettings NOTIFY roomSettingsChanged)
    Q_PROPERTY(bool canMarkRead READ canMarkRead WRITE setCanMarkRead NOTIFY canMarkReadChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)
    Q_PROPERTY(QString retryNonce READ retryNonce NOTIFY composerChanged)
    // The kind of room the new-room sheet was asked for elsewhere in the
    // window; empty when the sheet is not requested.
    Q_PROPERTY(QString createMode READ createMode NOTIFY createModeChanged)
    // "/gif QUERY" sent from the composer opens the picker instead.
    Q_PROPERTY(NativeGifPicker *gifPicker READ gifPicker CONSTANT)
    Q_PROPERTY(bool gifPickerOpen READ gifPickerOpen NOTIFY gifPickerOpenChanged)
    // The signed-in person's id: their own messages can be edited and deleted.
    Q_PROPERTY(QString me READ userId NOTIFY peopleChanged)
    // "channel" or "dm" for the open room; empty while it is not listed.
    Q_PROPERTY(QString selectedKind READ selectedKind NOTIFY selectedKindChanged)
    // The message being edited in place and its text; empty when none is.
    Q_PROPERTY(QString editingId READ editingId NOTIFY editingChanged)
    Q_PROPERTY(QString editText READ editText WRITE setEditText NOTIFY editingChanged)
    // Image attachments downloaded for the timeline: file id to a local file URL.
    Q_PROPERTY(QVariantMap imageFiles READ imageFiles NOTIFY imageFilesChanged)
    // The emoji offered for a new reaction.
    Q_PROPERTY(QStringList quickReactions READ quickReactions CONSTANT)

public:
    // The preference key of the room a person had open last, with their id.
    static constexpr QLatin1StringView lastRoomKey { "tarn.lastRoom." };

    NativeChatView(TarnAPI &api, TarnNavigation &navigation, QSettings &preferences, QObject *parent = nullptr);
    ~NativeChatView() override;

    [[nodiscard]] NativeChatRoomModel *rooms() const { return m_rooms; }
    [[nodiscard]] NativeChatTimelineModel *timeline() const { return m_timeline; }
    [[nodiscard]] NativeChatTimelineModel *thread() const { return m_thread; }
    [[nodiscard]] NativeChatSearchModel *searchHits() const { return m_searchHits; }
    [[nodiscard]] QVariantList people() const;
    [[nodiscard]] QString selectedRoom() const { return m_room; }
    [[nodiscard]] QString threadParent() const { return m_threadParent; }
    [[nodiscard]] QString composerText() const { return m_composer; }
    void setComposerText(const QString &text);
    [[nodiscard]] QVariantList stagedFiles() const;
    [[nodiscard]] QString searchText() const { return m_search; }
    void setSearchText(const QString &text);
    [[nodiscard]] bool sending() const { return m_sending; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool hasMore() const { return m_hasMore; }
    [[nodiscard]] bool loadingOlder() const { return m_loadingOlder; }
    [[nodiscard]] QVariantMap roomSettings() const { return m_roomSettings; }
    [[nodiscard]] bool canMarkRead() const { return m_canMarkRead; }
    void setCanMarkRead(bool can);
    [[nodiscard]] QString errorText() const { return m_error; }
    [[nodiscard]] QString retryNonce() const { return m_retryNonce; }
    [[nodiscard]] QString createMode() const { return m_createMode; }
    [[nodiscard]] NativeGifPicker *gifPicker() const { return m_gifPicker; }
    [[nodiscard]] bool gifPickerOpen() const { return m_gifPickerOpen; }
    [[nodiscard]] QString selectedKind() const { return m_selectedKind; }
    [[nodiscard]] QString editingId() const { return m_editingId; }
    [[nodiscard]] QString editText() const { return m_editText; }
    void setEditText(const QString &text);
    [[nodiscard]] static QStringList quickReactions();
    [[nodiscard]] QVariantMap imageFiles() const { return m_imageFiles; }
    Q_INVOKABLE void closeGifPicker();
    // Downloads an attachment into the cache and announces it with
    // `attachmentReady`, for the desktop's default app to open.
    Q_INVOKABLE void openAttachment(const QString &messageId, const QString &fileId);
    // Downloads an image attachment once, for the timeline to show inline;
    // it appears in `imageFiles`.
    Q_INVOKABLE void fetchImage(const QString &messageId, const QString &fileId);
    Q_INVOKABLE void clearCreateMode();

    // Shown: takes the drafts navigation handed over, loads, then refreshes
    // every 8 seconds until `disappear`.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    // Forgets everything shown and typed: the session ended, and the next
    // person must not see one line of it.
    void clear();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void selectRoom(const QString &room);
    Q_INVOKABLE void loadOlder();
    Q_INVOKABLE void send();
    Q_INVOKABLE bool stageFile(const QString &path);
    bool stageImage(const QImage &image);
    // Pasted or dropped data: each local file staged as if chosen, or raw
    // image data as "pasted-image.png". False when it holds neither, so
    // that text pastes as text.
    bool stageMime(const QMimeData &data);
    Q_INVOKABLE bool pasteFiles();
    // Dropped files; gives how many were staged.
    Q_INVOKABLE int stageUrls(const QList<QUrl> &urls);
    Q_INVOKABLE void unstageFile(const QString &id);
    Q_INVOKABLE void openThread(const QString &messageId);
    Q_INVOKABLE void closeThread();
    Q_INVOKABLE void sendReply(const QString &text);
    // Editing one's own message: the edit stays open until the service
    // takes it, so a refused one (another edit came first) loses nothing.
    Q_INVOKABLE void beginEdit(const QString &id);
    Q_INVOKABLE void cancelEdit();
    Q_INVOKABLE void saveEdit();
    Q_INVOKABLE void deleteMessage(const QString &id);
    Q_INVOKABLE void toggleReaction(const QString &id, const QString &emoji);
    Q_INVOKABLE void toggleSaved(const QString &id);
    Q_INVOKABLE void openSearchHit(int row);
    Q_INVOKABLE void createDirectMessage(const QString &personId);
    Q_INVOKABLE void createChannel(const QString &name, bool isPrivate, const QStringList &members);
    Q_INVOKABLE void loadRoomSettings();
    // `chosen` are the people the sheet offers who stay or become members;
    // members it does not offer (the signed-in person, people no longer
    // active) stay as they are.
    Q_INVOKABLE void saveRoomSettings(const QString &name, bool isPrivate, bool archived, const QStringList &chosen);

Q_SIGNALS:
    void peopleChanged();
    void selectedRoomChanged();
    void threadChanged();
    void composerChanged();
    void searchTextChanged();
    void sendingChanged();
    void loadingChanged();
    void timelineStateChanged();
    void roomSettingsChanged();
    void canMarkReadChanged();
    void errorTextChanged();
    void createModeChanged();
    void gifPickerOpenChanged();
    void selectedKindChanged();
    void editingChanged();
    void imageFilesChanged();
    void attachmentReady(const QUrl &file);
    // A refresh, a room load or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    struct Preview {
        QString body;
        QString author;
        // The room's unread count when it was fetched: a new count means news.
        qint64 unread = 0;
    };

    // Awaits one call; a failure is shown, ends the action and gives nothing.
    template <typename T> QCoro::Task<std::optional<T>> attempt(QCoro::Task<T> call);
    QCoro::Task<> refreshOnce();
    QCoro::Task<> loadRoom(QString room);
    [[nodiscard]] static Preview previewOf(const QList<TarnMessage> &messages, qint64 unread);
    QCoro::Task<> loadPreviews(QList<TarnRoom> rooms);
    QCoro::Task<> olderTask();
    // The attachment saved in the cache, or nothing (the reason is shown).
    QCoro::Task<std::optional<QUrl>> downloadTask(QString room, QString fileId, QString name);
    QCoro::Task<> openTask(QString room, QString fileId, QString name);
    QCoro::Task<> imageTask(QString room, QString fileId, QString name);
    QCoro::Task<> gifTask(QString room, ChatDraftFile gif);
    QCoro::Task<> sendTask(QString room, QString body, QString nonce, QList<ChatDraftFile> files);
    QCoro::Task<> replyTask(QString room, QString parent, QString body);
    QCoro::Task<> loadThread(QString room, QString parent);
    QCoro::Task<> replaceTask(QCoro::Task<TarnMessage> call);
    QCoro::Task<> editTask(QString id, QCoro::Task<TarnMessage> call);
    QCoro::Task<> searchTask(QString text);
    QCoro::Task<> createTask(QCoro::Task<TarnCreatedID> call);
    QCoro::Task<> settingsTask(QString room);
    QCoro::Task<> saveSettingsTask(QString room, TarnRoomSettingsUpdate update);

    void takeCreateRequest();
    // Stages a prepared file, or shows why it was refused (nothing else changes).
    bool stage(const std::variant<ChatDraftFile, QString> &outcome);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void setLoading(bool loading);
    void showMessages();
    void showRooms();
    void replaceMessage(const TarnMessage &message);
    [[nodiscard]] const TarnMessage *shownMessage(const QString &id) const;
    [[nodiscard]] QString signature() const;
    [[nodiscard]] QString userId() const;

    TarnAPI &m_api;
    TarnNavigation &m_navigation;
    QSettings &m_preferences;
    NativeChatRoomModel *m_rooms;
    NativeChatTimelineModel *m_timeline;
    NativeChatTimelineModel *m_thread;
    NativeChatSearchModel *m_searchHits;
    NativeGifPicker *m_gifPicker;
    bool m_gifPickerOpen = false;
    QTimer m_searchDelay;

    QList<TarnRoom> m_roomList;
    QList<TarnChatPerson> m_people;
    QHash<QString, Preview> m_previews;
    QString m_room;
    QList<TarnMessage> m_messages;
    std::optional<qint64> m_newFrom;
    bool m_hasMore = false;
    bool m_loadingOlder = false;
    QString m_threadParent;
    QList<TarnMessage> m_replies;

    QString m_composer;
    QList<ChatDraftFile> m_staged;
    bool m_sending = false;
    QString m_retryBody;
    QString m_retryNonce;
    QString m_retryRoom;
    QString m_retrySignature;

    QString m_editingId;
    QString m_editText;
    QString m_selectedKind;
    // Fetched or being fetched (an empty value) for the timeline.
    QVariantMap m_imageFiles;

    QString m_search;
    QString m_createMode;
    QVariantMap m_roomSettings;
    bool m_canMarkRead = true;
    bool m_loading = false;
    QString m_error;
    // Bumped when the screen goes away (ends the refresh loop) and when
    // another room is chosen (drops answers for the one before).
    int m_loopGeneration = 0;
    int m_roomGeneration = 0;
};
