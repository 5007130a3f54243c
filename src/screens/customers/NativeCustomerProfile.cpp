#include "screens/customers/NativeCustomerProfile.h"

#include "screens/customers/CustomerRules.h"
#include "screens/customers/TarnCustomerCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "shell/NativeStateErrors.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

// Newest first, as the service orders a timeline: a later time, or the
// same time and a greater id. Times share one format, so text order is time order.
bool newer(const TarnTimelineEvent &a, const TarnTimelineEvent &b)
{
    return a.at != b.at ? a.at > b.at : a.id > b.id;
}

} // namespace

NativeCustomerProfile::NativeCustomerProfile(TarnAPI &api, Clock clock, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_clock(std::move(clock))
    , m_timeline(new NativeKeyedListModel<CustomerTimelineRow, &CustomerTimelineRow::id>(
          {
              { "eventId", &CustomerTimelineRow::id },
              { "kind", &CustomerTimelineRow::kind },
              { "kindLabel", &CustomerTimelineRow::kindLabel },
              { "title", &CustomerTimelineRow::title },
              { "body", &CustomerTimelineRow::body },
              { "author", &CustomerTimelineRow::author },
              { "time", &CustomerTimelineRow::timeLabel },
              { "day", &CustomerTimelineRow::dayLabel },
              { "firstOfDay", &CustomerTimelineRow::firstOfDay },
          },
          this))
    , m_tasks(new NativeKeyedListModel<TarnCustomerTask, &TarnCustomerTask::id>(
          {
              { "taskId", &TarnCustomerTask::id },
              { "title", &TarnCustomerTask::title },
              { "due", [](const TarnCustomerTask &t) { return CustomerRules::dayText(t.due_on.value_or(QString())); } },
              { "done", &TarnCustomerTask::done },
          },
          this))
    , m_contacts(new NativeKeyedListModel<TarnCustomerContact, &TarnCustomerContact::id>(
          {
              { "contactId", &TarnCustomerContact::id },
              { "name", &TarnCustomerContact::name },
              { "role", &TarnCustomerContact::role },
              { "email", &TarnCustomerContact::email },
              { "phone", &TarnCustomerContact::phone },
          },
          this))
    , m_files(new NativeKeyedListModel<TarnRecordFile, &TarnRecordFile::id>(
          {
              { "fileId", &TarnRecordFile::id },
              { "name", &TarnRecordFile::name },
              { "size", [](const TarnRecordFile &f) { return QLocale().formattedDataSize(f.size); } },
              { "added", [](const TarnRecordFile &f) { return CustomerRules::dayText(f.added_at); } },
          },
          this))
    , m_reminders(new NativeKeyedListModel<TarnRecordReminder, &TarnRecordReminder::id>(
          {
              { "reminderId", &TarnRecordReminder::id },
              { "about", &TarnRecordReminder::text },
              { "when",
                  [](const TarnRecordReminder &r) {
                      return QDateTime::fromString(r.remind_at, Qt::ISODateWithMs)
                          .toLocalTime()
                          .toString(u"d MMM yyyy HH:mm"_s);
                  } },
              { "person", &TarnRecordReminder::person_name },
          },
          this))
    , m_drafts(new NativeKeyedListModel<TarnCustomerDraft, &TarnCustomerDraft::id>(
          {
              { "draftId", &TarnCustomerDraft::id },
              { "channel", &TarnCustomerDraft::channel },
              { "subject", &TarnCustomerDraft::subject },
              { "body", &TarnCustomerDraft::body },
          },
          this))
{
}

NativeCustomerProfile::~NativeCustomerProfile() = default;

QString NativeCustomerProfile::stageLabel() const
{
    return m_profile ? CustomerRules::stageLabel(m_profile->stage) : QString();
}

QString NativeCustomerProfile::followUpOn() const
{
    return m_profile ? m_profile->follow_up_on.value_or(QString()) : QString();
}

void NativeCustomerProfile::open(const QString &clientId)
{
    if (clientId == m_clientId && m_profile)
        return;
    ++m_generation;
    m_clientId = clientId;
    m_confirmingArchive = false;
    showProfile(std::nullopt);
    showTimeline({}, std::nullopt);
    setError({});
    Q_EMIT confirmingArchiveChanged();
    if (!clientId.isEmpty())
        reload();
}

void NativeCustomerProfile::close()
{
    open({});
}

void NativeCustomerProfile::reload()
{
    if (!m_clientId.isEmpty())
        loadTask(m_generation, m_clientId);
}

QCoro::Task<> NativeCustomerProfile::loadTask(int generation, QString id)
{
    const QPointer<NativeCustomerProfile> self(this);
    setLoading(true);
    try {
        TarnCustomerProfile profile = co_await TarnCustomerCalls::crm360Profile(m_api, id);
        if (!self || generation != m_generation)
            co_return;
        showProfile(std::move(profile));
        co_await refreshTimeline(generation, id);
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation)
            fail(error);
    }
    if (!self || generation != m_generation)
        co_return;
    setLoading(false);
    Q_EMIT loaded();
}

QCoro::Task<> NativeCustomerProfile::refreshTimeline(int generation, QString id)
{
    const QPointer<NativeCustomerProfile> self(this);
    const QString newest;
    TarnTimelinePage page = co_await TarnCustomerCalls::crm360Timeline(m_api, id, newest, timelinePage);
    if (!self || generation != m_generation)
        co_return;
    // Pages further back stay as read and the fresh page replaces what it
    // covers, unless more arrived than a page: then the fresh page is the
    // timeline again, as a gap would show otherwise.
    if (!page.next_before || m_events.isEmpty() || newer(page.events.last(), m_events.first())) {
        showTimeline(std::move(page.events), std::move(page.next_before));
        co_return;
    }
    const TarnTimelineEvent oldest = page.events.last();
    QList<TarnTimelineEvent> events = std::move(page.events);
    bool kept = false;
    for (const TarnTimelineEvent &event : std::as_const(m_events)) {
        if (newer(oldest, event)) {
            events.append(event);
            kept = true;
        }
    }
    showTimeline(std::move(events), kept ? m_nextBefore : page.next_before);
}

void NativeCustomerProfile::loadMoreTimeline()
{
    if (m_loadingMore || !m_nextBefore || m_clientId.isEmpty())
        return;
    m_loadingMore = true;
    moreTask(m_generation, m_clientId, *m_nextBefore);
}

QCoro::Task<> NativeCustomerProfile::moreTask(int generation, QString id, QString before)
{
    const QPointer<NativeCustomerProfile> self(this);
    try {
        TarnTimelinePage page = co_await TarnCustomerCalls::crm360Timeline(m_api, id, before, timelinePage);
        if (!self || generation != m_generation)
            co_return;
        QList<TarnTimelineEvent> events = m_events;
        events.append(page.events);
        showTimeline(std::move(events), std::move(page.next_before));
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation)
            fail(error);
    }
    if (self) {
        m_loadingMore = false;
        Q_EMIT loaded();
    }
}

void NativeCustomerProfile::showTimeline(QList<TarnTimelineEvent> events, std::optional<QString> more)
{
    m_timeline->setRows(CustomerRules::timelineRows(events, m_clock()));
    m_events = std::move(events);
    m_nextBefore = std::move(more);
    Q_EMIT timelineChanged();
}

void NativeCustomerProfile::showProfile(std::optional<TarnCustomerProfile> profile)
{
    if (profile == m_profile)
        return;
    m_tasks->setRows(profile ? profile->tasks : QList<TarnCustomerTask>());
    m_contacts->setRows(profile ? profile->contacts : QList<TarnCustomerContact>());
    m_files->setRows(profile ? profile->files : QList<TarnRecordFile>());
    m_reminders->setRows(profile ? profile->reminders : QList<TarnRecordReminder>());
    m_drafts->setRows(profile ? profile->drafts : QList<TarnCustomerDraft>());
    m_profile = std::move(profile);
    Q_EMIT profileChanged();
}

template <typename T> QCoro::Task<> NativeCustomerProfile::change(QCoro::Task<T> call, bool listed)
{
    const QPointer<NativeCustomerProfile> self(this);
    const int generation = m_generation;
    const QString id = m_clientId;
    setBusy(true);
    bool done = false;
    try {
        co_await std::move(call);
        done = true;
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation)
            fail(error);
    }
    if (!self || generation != m_generation)
        co_return;
    if (done)
        setError({});
    // Read again whatever the answer: a refusal is often someone else's change.
    co_await loadTask(generation, id);
    if (!self)
        co_return;
    setBusy(false);
    if (listed)
        Q_EMIT customerChanged(id);
    Q_EMIT actionFinished();
}

void NativeCustomerProfile::saveDetails(
    const QString &name, const QString &email, const QString &phone, const QString &company, const QString &address)
{
    if (!m_profile || m_busy)
        return;
    if (name.trimmed().isEmpty()) {
        setError(u"A customer needs a name."_s);
        return;
    }
    saveTask(m_generation, m_clientId,
        TarnCustomerDetails { m_profile->version, name.trimmed(), email.trimmed(), phone.trimmed(), company.trimmed(),
            address.trimmed() });
}

QCoro::Task<> NativeCustomerProfile::saveTask(int generation, QString id, TarnCustomerDetails details)
{
    const QPointer<NativeCustomerProfile> self(this);
    setBusy(true);
    try {
        TarnCustomerProfile saved = co_await TarnCustomerCalls::crm360SaveDetails(m_api, id, details);
        if (!self || generation != m_generation)
            co_return;
        setError({});
        showProfile(std::move(saved));
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation)
            fail(error);
    }
    if (!self || generation != m_generation)
        co_return;
    // A refused save shows the record as it now stands; a saved one may
    // have brought the customer's mail into the timeline.
    co_await loadTask(generation, id);
    if (!self)
        co_return;
    setBusy(false);
    Q_EMIT customerChanged(id);
    Q_EMIT actionFinished();
}

void NativeCustomerProfile::changeStage(const QString &stage)
{
    if (m_profile && stage != m_profile->stage)
        change(TarnCustomerCalls::crm360ChangeStage(m_api, m_clientId, stage), true);
}

void NativeCustomerProfile::setTaskDone(const QString &taskId, bool done)
{
    change(TarnCustomerCalls::crm360UpdateTask(m_api, taskId, TarnCustomerTaskUpdate { .done = done }), true);
}

void NativeCustomerProfile::deleteTask(const QString &taskId)
{
    change(TarnCustomerCalls::crm360DeleteTask(m_api, taskId), true);
}

void NativeCustomerProfile::addNote(const QString &text)
{
    if (isOpen() && !text.trimmed().isEmpty())
        change(TarnCustomerCalls::crm360AddNote(m_api, m_clientId, text.trimmed()), false);
}

void NativeCustomerProfile::addContact(
    const QString &name, const QString &role, const QString &email, const QString &phone)
{
    if (name.trimmed().isEmpty()) {
        setError(u"A contact needs a name."_s);
        return;
    }
    change(TarnCustomerCalls::addCRMContact(m_api, m_clientId,
               TarnCRMContactRequest { name.trimmed(), role.trimmed(), email.trimmed(), phone.trimmed() }),
        false);
}

void NativeCustomerProfile::deleteContact(const QString &contactId)
{
    change(TarnCustomerCalls::deleteCRMContact(m_api, contactId), false);
}

void NativeCustomerProfile::uploadFile(const QUrl &file)
{
    if (!isOpen())
        return;
    const QFileInfo info(file.toLocalFile());
    if (const std::optional<QString> refusal = CustomerRules::fileRefusal(info.fileName(), info.size())) {
        setError(*refusal);
        return;
    }
    QFile source(info.filePath());
    if (!source.open(QIODevice::ReadOnly)) {
        setError(u"“%1” could not be read: %2"_s.arg(info.fileName(), source.errorString()));
        return;
    }
    change(
        TarnCustomerCalls::uploadRecordFile(m_api, m_clientId, TarnRecordUpload { info.fileName(), source.readAll() }),
        false);
}

void NativeCustomerProfile::downloadFile(const QString &fileId, const QUrl &target)
{
    if (isOpen())
        downloadTask(m_clientId, fileId, target.toLocalFile());
}

QCoro::Task<> NativeCustomerProfile::downloadTask(QString id, QString file, QString path)
{
    const QPointer<NativeCustomerProfile> self(this);
    setBusy(true);
    try {
        const QByteArray bytes = co_await TarnCustomerCalls::downloadRecordFile(m_api, id, file);
        if (!self)
            co_return;
        QSaveFile out(path);
        if (out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit())
            Q_EMIT fileSaved(path);
        else
            setError(u"“%1” could not be saved: %2"_s.arg(QFileInfo(path).fileName(), out.errorString()));
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (self) {
        setBusy(false);
        Q_EMIT actionFinished();
    }
}

void NativeCustomerProfile::deleteFile(const QString &fileId)
{
    change(TarnCustomerCalls::deleteRecordFile(m_api, m_clientId, fileId), false);
}

void NativeCustomerProfile::addReminder(const QString &text, const QDateTime &at)
{
    if (text.trimmed().isEmpty() || !at.isValid()) {
        setError(u"A reminder needs text and a time."_s);
        return;
    }
    change(TarnCustomerCalls::addRecordReminder(
               m_api, m_clientId, TarnRecordReminderRequest { text.trimmed(), at.toUTC().toString(Qt::ISODateWithMs) }),
        false);
}

void NativeCustomerProfile::setFollowUp(const QString &day)
{
    change(TarnCustomerCalls::setSalesFollowUp(m_api, m_clientId, day), true);
}

void NativeCustomerProfile::askArchive()
{
    if (!m_profile || m_confirmingArchive)
        return;
    m_confirmingArchive = true;
    Q_EMIT confirmingArchiveChanged();
}

void NativeCustomerProfile::cancelArchive()
{
    if (!m_confirmingArchive)
        return;
    m_confirmingArchive = false;
    Q_EMIT confirmingArchiveChanged();
}

void NativeCustomerProfile::confirmArchive()
{
    if (!m_confirmingArchive)
        return;
    cancelArchive();
    change(TarnCustomerCalls::archiveRecord(m_api, m_clientId), true);
}

void NativeCustomerProfile::sendDraft(const QString &draftId)
{
    change(TarnCustomerCalls::sendCRMDraft(m_api, draftId), false);
}

void NativeCustomerProfile::discardDraft(const QString &draftId)
{
    change(TarnCustomerCalls::discardCRMDraft(m_api, draftId), false);
}

void NativeCustomerProfile::dismissError()
{
    setError({});
}

void NativeCustomerProfile::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeCustomerProfile::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeCustomerProfile::setLoading(bool loading)
{
    if (m_loading == loading)
        return;
    m_loading = loading;
    Q_EMIT busyChanged();
}

void NativeCustomerProfile::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}
