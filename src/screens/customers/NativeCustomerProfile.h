#pragma once

#include "screens/customers/CustomerRules.h"
#include "screens/customers/CustomerTimelineRow.h"
#include "screens/customers/TarnCustomerProfile.h"
#include "screens/customers/TarnCustomerRequests.h"
#include "screens/customers/TarnTimelineEvent.h"
#include "shell/NativeKeyedListModel.h"

#include <QAbstractListModel>
#include <QCoroTask>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

class TarnAPI;
class TarnAPIError;

// The open customer: the details (saved against the version they were read
// at; a stale save shows the service's record and its refusal), the
// timeline (paged, newest first, as day-grouped rows), tasks, contacts,
// files (the size limit refused before anything is sent, naming the file),
// reminders, the follow-up day, drafted messages to send or discard, and
// archiving, which asks first. After every change the profile and the
// timeline's newest page are read again, keeping older pages already read,
// so what is shown is the service's final state. A failure says why in
// `errorText` and keeps what is shown.
class NativeCustomerProfile : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString clientId READ clientId NOTIFY profileChanged)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY profileChanged)
    Q_PROPERTY(QString name READ name NOTIFY profileChanged)
    Q_PROPERTY(QString stage READ stage NOTIFY profileChanged)
    Q_PROPERTY(QString stageLabel READ stageLabel NOTIFY profileChanged)
    Q_PROPERTY(QString email READ email NOTIFY profileChanged)
    Q_PROPERTY(QString phone READ phone NOTIFY profileChanged)
    Q_PROPERTY(QString company READ company NOTIFY profileChanged)
    Q_PROPERTY(QString address READ address NOTIFY profileChanged)
    Q_PROPERTY(int version READ version NOTIFY profileChanged)
    Q_PROPERTY(bool archived READ archived NOTIFY profileChanged)
    Q_PROPERTY(QString followUpOn READ followUpOn NOTIFY profileChanged)
    Q_PROPERTY(QString followUpLabel READ followUpLabel NOTIFY profileChanged)
    Q_PROPERTY(QAbstractListModel *timeline READ timeline CONSTANT)
    Q_PROPERTY(QAbstractListModel *tasks READ tasks CONSTANT)
    Q_PROPERTY(QAbstractListModel *contacts READ contacts CONSTANT)
    Q_PROPERTY(QAbstractListModel *files READ files CONSTANT)
    Q_PROPERTY(QAbstractListModel *reminders READ reminders CONSTANT)
    Q_PROPERTY(QAbstractListModel *drafts READ drafts CONSTANT)
    Q_PROPERTY(bool hasMoreTimeline READ hasMoreTimeline NOTIFY timelineChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool confirmingArchive READ confirmingArchive NOTIFY confirmingArchiveChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int timelinePage = 100;

    using Clock = std::function<QDateTime()>;
    explicit NativeCustomerProfile(TarnAPI &api, Clock clock = &QDateTime::currentDateTime, QObject *parent = nullptr);
    ~NativeCustomerProfile() override;

    [[nodiscard]] QString clientId() const { return m_clientId; }
    [[nodiscard]] bool isOpen() const { return !m_clientId.isEmpty(); }
    [[nodiscard]] QString name() const { return m_profile ? m_profile->name : QString(); }
    [[nodiscard]] QString stage() const { return m_profile ? m_profile->stage : QString(); }
    [[nodiscard]] QString stageLabel() const;
    [[nodiscard]] QString email() const { return m_profile ? m_profile->email : QString(); }
    [[nodiscard]] QString phone() const { return m_profile ? m_profile->phone : QString(); }
    [[nodiscard]] QString company() const { return m_profile ? m_profile->company : QString(); }
    [[nodiscard]] QString address() const { return m_profile ? m_profile->address : QString(); }
    [[nodiscard]] int version() const { return m_profile ? int(m_profile->version) : 0; }
    [[nodiscard]] bool archived() const { return m_profile && m_profile->archived; }
    [[nodiscard]] QString followUpOn() const;
    [[nodiscard]] QString followUpLabel() const { return CustomerRules::dayText(followUpOn()); }
    [[nodiscard]] QAbstractListModel *timeline() const { return m_timeline; }
    [[nodiscard]] QAbstractListModel *tasks() const { return m_tasks; }
    [[nodiscard]] QAbstractListModel *contacts() const { return m_contacts; }
    [[nodiscard]] QAbstractListModel *files() const { return m_files; }
    [[nodiscard]] QAbstractListModel *reminders() const { return m_reminders; }
    [[nodiscard]] QAbstractListModel *drafts() const { return m_drafts; }
    [[nodiscard]] bool hasMoreTimeline() const { return m_nextBefore.has_value(); }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] bool confirmingArchive() const { return m_confirmingArchive; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void open(const QString &clientId);
    Q_INVOKABLE void close();
    Q_INVOKABLE void reload();
    Q_INVOKABLE void loadMoreTimeline();

    Q_INVOKABLE void saveDetails(const QString &name, const QString &email, const QString &phone,
        const QString &company, const QString &address);
    Q_INVOKABLE void changeStage(const QString &stage);
    Q_INVOKABLE void setTaskDone(const QString &taskId, bool done);
    Q_INVOKABLE void deleteTask(const QString &taskId);
    Q_INVOKABLE void addNote(const QString &text);
    Q_INVOKABLE void addContact(const QString &name, const QString &role, const QString &email, const QString &phone);
    Q_INVOKABLE void deleteContact(const QString &contactId);
    // A local file; one over the limit is refused here, naming it.
    Q_INVOKABLE void uploadFile(const QUrl &file);
    // Saves the record's file at `target` and emits fileSaved.
    Q_INVOKABLE void downloadFile(const QString &fileId, const QUrl &target);
    Q_INVOKABLE void deleteFile(const QString &fileId);
    Q_INVOKABLE void addReminder(const QString &text, const QDateTime &at);
    // A day as YYYY-MM-DD; empty clears the follow-up.
    Q_INVOKABLE void setFollowUp(const QString &day);
    // Archiving asks first: askArchive raises the question, confirmArchive
    // archives and closes the profile, cancelArchive drops the question.
    Q_INVOKABLE void askArchive();
    Q_INVOKABLE void confirmArchive();
    Q_INVOKABLE void cancelArchive();
    Q_INVOKABLE void sendDraft(const QString &draftId);
    Q_INVOKABLE void discardDraft(const QString &draftId);
    Q_INVOKABLE void dismissError();

    // The events as the service gave them, newest first; `more` asks for
    // the page after the last. Public for the timeline's benchmark.
    void showTimeline(QList<TarnTimelineEvent> events, std::optional<QString> more);

Q_SIGNALS:
    void profileChanged();
    void timelineChanged();
    void busyChanged();
    void confirmingArchiveChanged();
    void errorTextChanged();
    // A load or an action has finished (for tests and the screenshot).
    void loaded();
    void actionFinished();
    // Something a list of customers shows changed: name, stage, archived.
    void customerChanged(const QString &clientId);
    void fileSaved(const QString &path);
    void signedOut();

private:
    QCoro::Task<> loadTask(int generation, QString id);
    // Reads the newest page again and keeps the older pages already read.
    QCoro::Task<> refreshTimeline(int generation, QString id);
    QCoro::Task<> moreTask(int generation, QString id, QString before);
    // Awaits one change, then reads the profile and timeline again.
    template <typename T> QCoro::Task<> change(QCoro::Task<T> call, bool listed);
    QCoro::Task<> saveTask(int generation, QString id, TarnCustomerDetails details);
    QCoro::Task<> downloadTask(QString id, QString file, QString path);
    void showProfile(std::optional<TarnCustomerProfile> profile);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void setLoading(bool loading);
    void setBusy(bool busy);

    TarnAPI &m_api;
    Clock m_clock;
    NativeKeyedListModel<CustomerTimelineRow, &CustomerTimelineRow::id> *m_timeline;
    NativeKeyedListModel<TarnCustomerTask, &TarnCustomerTask::id> *m_tasks;
    NativeKeyedListModel<TarnCustomerContact, &TarnCustomerContact::id> *m_contacts;
    NativeKeyedListModel<TarnRecordFile, &TarnRecordFile::id> *m_files;
    NativeKeyedListModel<TarnRecordReminder, &TarnRecordReminder::id> *m_reminders;
    NativeKeyedListModel<TarnCustomerDraft, &TarnCustomerDraft::id> *m_drafts;
    QString m_clientId;
    std::optional<TarnCustomerProfile> m_profile;
    QList<TarnTimelineEvent> m_events;
    std::optional<QString> m_nextBefore;
    bool m_loading = false;
    bool m_busy = false;
    bool m_loadingMore = false;
    bool m_confirmingArchive = false;
    QString m_error;
    // Bumped when another customer opens or the profile closes: answers
    // for the one shown before are dropped.
    int m_generation = 0;
};
