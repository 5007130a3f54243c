#pragma once

#include "inbox/NativeInboxEntryModel.h"
#include "inbox/NativeInboxListModel.h"
#include "inbox/TarnInboxAction.h"
#include "inbox/TarnInboxThread.h"
#include "inbox/TarnSnoozeChoice.h"

#include <QCoroTask>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <functional>
#include <optional>

class TarnAPI;
class TarnAPIError;

// The shared inbox screen: the filtered thread list with the count of
// threads waiting for a reply, the open thread with its entries, the
// composer (with @mentions of the thread's mention targets, "Draft with
// Pilo" where the assistant can draft, and a send that can be retried
// without storing the reply twice) and the thread's actions: assign, clear,
// snooze, done and reopen, discarding a draft, turning the sender into a
// customer, and starting a conversation. It refreshes every 10 seconds while
// shown (outbound messages move from queued to delivered within seconds);
// rows change in place, and the open thread and the composer's text stay.
// After every action the list and the thread are read again, so a change
// someone else made first is what is shown. A failure keeps what is shown
// and says why in `errorText`; a signed-out answer emits `signedOut`.
class NativeInboxView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeInboxListModel *threads READ threads CONSTANT)
    Q_PROPERTY(NativeInboxEntryModel *entries READ entries CONSTANT)
    Q_PROPERTY(QString scope READ scope WRITE setScope NOTIFY filtersChanged)
    Q_PROPERTY(QString view READ view WRITE setView NOTIFY filtersChanged)
    Q_PROPERTY(QString kind READ kind WRITE setKind NOTIFY filtersChanged)
    Q_PROPERTY(int unrepliedCount READ unrepliedCount NOTIFY unrepliedCountChanged)
    Q_PROPERTY(QString selectedThread READ selectedThread NOTIFY threadChanged)
    Q_PROPERTY(QString threadTitle READ threadTitle NOTIFY threadChanged)
    Q_PROPERTY(QString threadAddress READ threadAddress NOTIFY threadChanged)
    Q_PROPERTY(QString threadKind READ threadKind NOTIFY threadChanged)
    Q_PROPERTY(QString ownerId READ ownerId NOTIFY threadChanged)
    Q_PROPERTY(QString snoozedUntil READ snoozedUntil NOTIFY threadChanged)
    Q_PROPERTY(bool hasCustomer READ hasCustomer NOTIFY threadChanged)
    Q_PROPERTY(bool canEdit READ canEdit NOTIFY threadChanged)
    Q_PROPERTY(bool canSend READ canSend NOTIFY threadChanged)
    Q_PROPERTY(bool aiConfigured READ aiConfigured NOTIFY threadChanged)
    Q_PROPERTY(QVariantList assignees READ assignees NOTIFY threadChanged)
    Q_PROPERTY(QVariantList snoozeChoices READ snoozeChoices NOTIFY threadChanged)
    Q_PROPERTY(QString composerText READ composerText WRITE setComposerText NOTIFY composerChanged)
    // The mention targets whose name starts with the "@word" being typed.
    Q_PROPERTY(QVariantList mentionSuggestions READ mentionSuggestions NOTIFY composerChanged)
    Q_PROPERTY(bool sending READ sending NOTIFY busyChanged)
    Q_PROPERTY(bool drafting READ drafting NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 10'000;
    // The board a sender turned customer starts on: the Sales "Customers" board.
    static constexpr QLatin1StringView customerBoard { "customers" };

    using Clock = std::function<QDateTime()>;
    explicit NativeInboxView(TarnAPI &api, Clock clock = &QDateTime::currentDateTime, QObject *parent = nullptr);
    ~NativeInboxView() override;

    [[nodiscard]] NativeInboxListModel *threads() const { return m_threads; }
    [[nodiscard]] NativeInboxEntryModel *entries() const { return m_entries; }
    [[nodiscard]] QString scope() const { return m_scope; }
    void setScope(const QString &scope);
    [[nodiscard]] QString view() const { return m_view; }
    void setView(const QString &view);
    [[nodiscard]] QString kind() const { return m_kind; }
    void setKind(const QString &kind);
    [[nodiscard]] int unrepliedCount() const { return m_unreplied; }
    [[nodiscard]] QString selectedThread() const { return m_selected; }
    [[nodiscard]] QString threadTitle() const;
    [[nodiscard]] QString threadAddress() const { return m_thread ? m_thread->customer_address : QString(); }
    [[nodiscard]] QString threadKind() const { return m_thread ? m_thread->kind : QString(); }
    [[nodiscard]] QString ownerId() const { return m_thread ? m_thread->owner_id.value_or(QString()) : QString(); }
    [[nodiscard]] QString snoozedUntil() const;
    [[nodiscard]] bool hasCustomer() const { return m_thread && m_thread->client_id.has_value(); }
    [[nodiscard]] bool canEdit() const { return m_thread && m_thread->can_edit; }
    [[nodiscard]] bool canSend() const { return m_thread && m_thread->can_send; }
    [[nodiscard]] bool aiConfigured() const { return m_thread && m_thread->ai_configured; }
    [[nodiscard]] QVariantList assignees() const;
    // {label, date} of each preset, as TarnSnooze offers them now.
    [[nodiscard]] QVariantList snoozeChoices() const;
    [[nodiscard]] QString composerText() const { return m_composer; }
    void setComposerText(const QString &text);
    [[nodiscard]] QVariantList mentionSuggestions() const;
    [[nodiscard]] bool sending() const { return m_sending; }
    [[nodiscard]] bool drafting() const { return m_drafting; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] QString errorText() const { return m_error; }

    // Shown: loads, then refreshes every 10 seconds until `disappear`.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    // Forgets everything shown and typed: the session ended.
    void clear();

    Q_INVOKABLE void selectThread(const QString &id);
    Q_INVOKABLE void closeThread();
    // Replaces the "@word" being typed with "@Name " and remembers the person.
    Q_INVOKABLE void insertMention(const QString &personId);
    Q_INVOKABLE void send();
    Q_INVOKABLE void draftWithPilo();
    Q_INVOKABLE void discardDraft(const QString &entryId);
    Q_INVOKABLE void assign(const QString &personId);
    Q_INVOKABLE void clearAssignee();
    // One of `snoozeChoices`, by its place.
    Q_INVOKABLE void snooze(int choice);
    // The custom date of the snooze sheet.
    Q_INVOKABLE void snoozeUntil(const QDateTime &until);
    Q_INVOKABLE void markDone();
    Q_INVOKABLE void reopen();
    Q_INVOKABLE void createCustomer(const QString &name);
    // A new conversation with an address, or with a customer by id; the
    // new (or existing) thread opens.
    Q_INVOKABLE void newConversation(const QString &address, const QString &clientId, const QString &kind);

Q_SIGNALS:
    void filtersChanged();
    void unrepliedCountChanged();
    void threadChanged();
    void composerChanged();
    void busyChanged();
    void errorTextChanged();
    // A refresh or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    QCoro::Task<> loadThread(QString id);
    QCoro::Task<> actionTask(QString id, TarnInboxAction action);
    QCoro::Task<> assistTask(QString id, QString draft);
    QCoro::Task<> customerTask(QString id, QString name);
    QCoro::Task<> conversationTask(QString address, QString clientId, QString kind);
    void act(const TarnInboxAction &action);
    // A new filter drops the answers for the old one and loads the list again.
    void setFilter(QString &filter, const QString &value);
    void showThread(std::optional<TarnInboxThread> thread);
    [[nodiscard]] QList<TarnSnoozeChoice> presets() const;
    [[nodiscard]] QString typedMention() const;
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void setBusy(bool *flag, bool value);

    TarnAPI &m_api;
    Clock m_clock;
    NativeInboxListModel *m_threads;
    NativeInboxEntryModel *m_entries;
    QString m_scope = QStringLiteral("all");
    QString m_view = QStringLiteral("open");
    QString m_kind = QStringLiteral("all");
    int m_unreplied = 0;
    QString m_selected;
    std::optional<TarnInboxThread> m_thread;
    QString m_composer;
    // Ids of people picked from the suggestions; sent while "@Name" stays in the text.
    QStringList m_mentioned;
    // The nonce of the last reply that failed, kept while its text and thread
    // stay the same, so sending again is recognised as the same reply.
    QString m_retryNonce;
    QString m_retryText;
    QString m_retryThread;
    bool m_sending = false;
    bool m_drafting = false;
    bool m_loading = false;
    QString m_error;
    // The error shown is a refresh's, cleared by the next one that works.
    bool m_refreshFailed = false;
    // Bumped when the screen goes away (ends the refresh loop), when
    // another thread is chosen and when the filters change (drop answers
    // for what was shown before).
    int m_loopGeneration = 0;
    int m_threadGeneration = 0;
    int m_listGeneration = 0;
};
