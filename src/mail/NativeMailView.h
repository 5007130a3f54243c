#pragma once

#include "mail/NativeMailComposer.h"
#include "mail/NativeMailImages.h"
#include "mail/NativeMailMessageModel.h"
#include "mail/NativeMailThreadModel.h"
#include "mail/TarnMailAction.h"
#include "mail/TarnMailDocument.h"
#include "mail/TarnMailLabel.h"
#include "mail/TarnMailReplyDraft.h"
#include "mail/TarnMailSection.h"
#include "mail/TarnMailThread.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <QVariantList>

#include <optional>

class TarnAPI;

// The mail screen's state: whether a mailbox is connected, the chosen view
// or search paged by the service's cursor, the selected thread (moved by
// TarnMailAction::nextSelection after an action), the open thread with each
// message parsed on a worker thread (applied here only while that thread is
// still the open one), the long-message limit, folded quoted text, the reply
// drafts the assistant prepared, and the composer. A failure keeps what is
// shown and says why.
class NativeMailView : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool statusKnown READ statusKnown NOTIFY statusChanged)
    Q_PROPERTY(bool connected READ connected NOTIFY statusChanged)
    Q_PROPERTY(QString email READ email NOTIFY statusChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY loadingChanged)
    Q_PROPERTY(bool loadFailed READ loadFailed NOTIFY listChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY listChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)
    Q_PROPERTY(QString view READ view WRITE setView NOTIFY listChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY listChanged)
    Q_PROPERTY(bool hasMore READ hasMore NOTIFY listChanged)
    Q_PROPERTY(bool loadingMore READ loadingMore NOTIFY loadingChanged)
    Q_PROPERTY(NativeMailThreadModel *threads READ threads CONSTANT)
    Q_PROPERTY(QString selectedThread READ selectedThread NOTIFY selectionChanged)
    Q_PROPERTY(QString threadSubject READ threadSubject NOTIFY threadChanged)
    Q_PROPERTY(bool threadLoading READ threadLoading NOTIFY threadChanged)
    Q_PROPERTY(NativeMailMessageModel *messages READ messages CONSTANT)
    Q_PROPERTY(QVariantList replyDrafts READ replyDrafts NOTIFY replyDraftsChanged)
    // The mailbox's labels as {id, name}, for putting them on and taking
    // them off the open thread; empty when organising is not permitted.
    Q_PROPERTY(QVariantList labels READ labels NOTIFY labelsChanged)
    Q_PROPERTY(NativeMailComposer *composer READ composer CONSTANT)
    Q_PROPERTY(NativeMailImages *images READ images CONSTANT)
    // A link whose text named another site, waiting for the person's word.
    Q_PROPERTY(QString pendingLink READ pendingLink NOTIFY pendingLinkChanged)

public:
    static constexpr QLatin1StringView loadFailedTitle { "Mail didn’t load" };
    static constexpr QLatin1StringView loadFailedDetail { "Check your connection, then try again." };
    static constexpr QLatin1StringView emptyListText { "Conversations will show up here as they arrive." };
    static constexpr QLatin1StringView formattingText { "Formatting message…" };
    static constexpr QLatin1StringView truncatedText { "This message is very long. Showing the first part." };
    static constexpr QLatin1StringView deceptiveLinkText {
        "The link text names a different site than where it really goes:"
    };

    // "1 image could not be loaded." or "N images could not be loaded."; empty for none.
    Q_INVOKABLE static QString imageFailureText(int failed);

    explicit NativeMailView(TarnAPI &api, QObject *parent = nullptr);
    ~NativeMailView() override;

    [[nodiscard]] bool statusKnown() const { return m_statusKnown; }
    [[nodiscard]] bool connected() const { return m_connected; }
    [[nodiscard]] QString email() const { return m_email; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loadFailed() const { return m_loadFailed; }
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] QString errorText() const { return m_error; }
    [[nodiscard]] QString view() const { return m_view; }
    void setView(const QString &view);
    [[nodiscard]] QString searchText() const { return m_search; }
    void setSearchText(const QString &text);
    [[nodiscard]] bool hasMore() const { return m_cursor.has_value(); }
    [[nodiscard]] bool loadingMore() const { return m_loadingMore; }
    [[nodiscard]] NativeMailThreadModel *threads() const { return m_threads; }
    [[nodiscard]] QString selectedThread() const { return m_selected.value_or(QString()); }
    [[nodiscard]] QString threadSubject() const { return m_thread ? m_thread->subject : QString(); }
    [[nodiscard]] bool threadLoading() const { return m_threadLoading; }
    [[nodiscard]] NativeMailMessageModel *messages() const { return m_messages; }
    [[nodiscard]] QVariantList replyDrafts() const;
    [[nodiscard]] QVariantList labels() const;
    [[nodiscard]] NativeMailComposer *composer() const { return m_composer; }
    [[nodiscard]] NativeMailImages *images() const { return m_images; }
    [[nodiscard]] QString pendingLink() const { return m_pendingLink.toString(); }

    // The parsed document of a message of the open thread; null while parsing.
    [[nodiscard]] const TarnMailDocument *document(const QString &messageId) const;
    [[nodiscard]] const std::optional<TarnMailThread> &openThread() const { return m_thread; }

    // "Connect Google Mail": asks the service where the browser starts.
    Q_INVOKABLE void connectMailbox();
    // The browser's connection ended: loads again, or shows why it failed.
    void finishConnecting(const QString &error);

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void loadMore();
    Q_INVOKABLE void select(const QString &threadId);
    // j and k: the next or previous thread of the list.
    Q_INVOKABLE void moveSelection(int step);
    // "done", "trash", "untrash", "unread", "inbox", "pin" or "unpin", on the selected thread.
    Q_INVOKABLE void act(const QString &kind);
    Q_INVOKABLE void snooze(qint64 untilMs);
    Q_INVOKABLE void setLabel(const QString &labelId, bool applied);
    Q_INVOKABLE void showEntireMessage(const QString &messageId);
    Q_INVOKABLE void toggleQuoted(const QString &messageId);
    // A link of a message, as its run holds it: opened at once, held in
    // pendingLink until confirmed when its text named another site, or
    // refused.
    Q_INVOKABLE void openLink(const QString &link);
    Q_INVOKABLE void confirmLink();
    Q_INVOKABLE void cancelLink();
    // Writes an attachment of the open thread to a file the person chose.
    Q_INVOKABLE void saveAttachment(const QString &messageId, const QString &attachmentId, const QUrl &file);
    Q_INVOKABLE void reply(bool all);
    Q_INVOKABLE void forward();
    // The assistant's draft into the composer, as a reply to its message.
    Q_INVOKABLE void useReplyDraft(const QString &draftId);
    Q_INVOKABLE void skipReplyDraft(const QString &draftId);
    Q_INVOKABLE void instructReplyDraft(const QString &draftId, const QString &instruction);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void statusChanged();
    void loadingChanged();
    void listChanged();
    void errorTextChanged();
    void selectionChanged();
    void threadChanged();
    void replyDraftsChanged();
    void labelsChanged();
    // The list's first page (or a search) has been answered, well or not.
    void listLoaded();
    // Every message of the open thread has its document.
    void threadParsed();
    // An action on a thread or a draft has finished.
    void actionFinished();
    void attachmentSaved(const QUrl &file);
    void pendingLinkChanged();
    // A message's document arrived or was parsed again.
    void documentChanged(const QString &messageId);
    // "Connect Google Mail": the browser is to open this, through the window's sign-in.
    void connectStarted(const QUrl &start);
    // For the desktop's browser; never fetched here.
    void openExternally(const QUrl &url);

private:
    QCoro::Task<> loadTask(int generation);
    QCoro::Task<> connectTask();
    QCoro::Task<> moreTask(int generation);
    QCoro::Task<> threadTask(QString id, int generation);
    QCoro::Task<> actionTask(TarnMailAction action, QString threadId);
    QCoro::Task<> draftsTask();
    QCoro::Task<> labelsTask();
    QCoro::Task<> draftActionTask(QString id, bool skip, QString instruction);
    QCoro::Task<> saveTask(QString threadId, QString messageId, QString attachmentId, QUrl file);
    void startParse(const TarnMailMessage &message, bool full);
    void showPage(const QList<TarnMailSection> &sections, bool append);
    void setSelected(const std::optional<QString> &id);
    void setLoading(bool loading);
    void setError(const QString &text);
    void closeThread();
    [[nodiscard]] const TarnMailMessage *message(const QString &id) const;

    TarnAPI &m_api;
    NativeMailThreadModel *m_threads;
    NativeMailMessageModel *m_messages;
    NativeMailComposer *m_composer;
    NativeMailImages *m_images;
    bool m_statusKnown = false;
    bool m_connected = false;
    QString m_email;
    bool m_loading = false;
    bool m_loadingMore = false;
    bool m_loadFailed = false;
    QString m_error;
    QString m_view = QStringLiteral("inbox");
    QString m_search;
    QString m_shownSearch; // the search the list answers
    std::optional<QString> m_cursor;
    std::optional<QString> m_selected;
    std::optional<TarnMailThread> m_thread;
    bool m_threadLoading = false;
    QHash<QString, TarnMailDocument> m_documents;
    QList<TarnMailReplyDraft> m_drafts;
    QList<TarnMailLabel> m_labels;
    QUrl m_pendingLink;
    QTimer m_searchDelay;
    // A new list or a new thread makes answers for the old one stale.
    int m_listGeneration = 0;
    int m_threadGeneration = 0;
};
