#include "inbox/NativeInboxView.h"

#include "inbox/TarnInboxCalls.h"
#include "inbox/TarnSnooze.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeStateErrors.h"

#include <QCoroTimer>
#include <QLocale>
#include <QPointer>
#include <QTimer>
#include <QUuid>

using namespace Qt::StringLiterals;

NativeInboxView::NativeInboxView(TarnAPI &api, Clock clock, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_clock(std::move(clock))
    , m_threads(new NativeInboxListModel(this))
    , m_entries(new NativeInboxEntryModel(this))
{
}

NativeInboxView::~NativeInboxView() = default;

void NativeInboxView::setScope(const QString &scope)
{
    setFilter(m_scope, scope);
}

void NativeInboxView::setView(const QString &view)
{
    setFilter(m_view, view);
}

void NativeInboxView::setKind(const QString &kind)
{
    setFilter(m_kind, kind);
}

void NativeInboxView::setFilter(QString &filter, const QString &value)
{
    if (filter == value)
        return;
    filter = value;
    ++m_listGeneration;
    Q_EMIT filtersChanged();
    refresh();
}

QString NativeInboxView::threadTitle() const
{
    if (!m_thread)
        return {};
    return m_thread->client_name.isEmpty() ? m_thread->customer_address : m_thread->client_name;
}

QString NativeInboxView::snoozedUntil() const
{
    if (!m_thread || !m_thread->snoozed_until)
        return {};
    return QDateTime::fromString(*m_thread->snoozed_until, Qt::ISODateWithMs)
        .toLocalTime()
        .toString(u"ddd d MMM HH:mm"_s);
}

QVariantList NativeInboxView::assignees() const
{
    QVariantList out;
    if (m_thread) {
        for (const TarnInboxPerson &person : m_thread->assignees)
            out.append(QVariantMap { { u"id"_s, person.id }, { u"name"_s, person.name } });
    }
    return out;
}

QList<TarnSnoozeChoice> NativeInboxView::presets() const
{
    return TarnSnooze::choices(m_clock(), QLocale().firstDayOfWeek());
}

QVariantList NativeInboxView::snoozeChoices() const
{
    QVariantList out;
    for (const TarnSnoozeChoice &choice : presets())
        out.append(QVariantMap { { u"label"_s, choice.label }, { u"time"_s, choice.date.toString(u"ddd HH:mm"_s) } });
    return out;
}

void NativeInboxView::setComposerText(const QString &text)
{
    if (m_composer == text)
        return;
    m_composer = text;
    Q_EMIT composerChanged();
}

QString NativeInboxView::typedMention() const
{
    const qsizetype at = m_composer.lastIndexOf(u'@');
    if (at < 0 || (at > 0 && !m_composer.at(at - 1).isSpace()))
        return {};
    const QString word = m_composer.mid(at + 1);
    if (word.contains(u' ') || word.contains(u'\n'))
        return {};
    // Not null even when nothing follows the "@": every target is suggested.
    return word.isNull() ? u""_s : word;
}

QVariantList NativeInboxView::mentionSuggestions() const
{
    const QString word = typedMention();
    QVariantList out;
    if (word.isNull() || !m_thread)
        return out;
    for (const TarnInboxPerson &person : m_thread->mention_targets) {
        if (person.name.startsWith(word, Qt::CaseInsensitive))
            out.append(QVariantMap { { u"id"_s, person.id }, { u"name"_s, person.name } });
    }
    return out;
}

void NativeInboxView::insertMention(const QString &personId)
{
    if (!m_thread || typedMention().isNull())
        return;
    for (const TarnInboxPerson &person : m_thread->mention_targets) {
        if (person.id != personId)
            continue;
        if (!m_mentioned.contains(personId))
            m_mentioned.append(personId);
        setComposerText(m_composer.left(m_composer.lastIndexOf(u'@')) + u'@' + person.name + u' ');
        return;
    }
}

void NativeInboxView::appear()
{
    setBusy(&m_loading, true);
    TarnRefreshLoop::run(
        this, &NativeInboxView::m_loopGeneration, ++m_loopGeneration, refreshIntervalMs, &NativeInboxView::refreshOnce);
}

void NativeInboxView::disappear()
{
    ++m_loopGeneration;
}

void NativeInboxView::refresh()
{
    refreshOnce();
}

void NativeInboxView::clear()
{
    ++m_loopGeneration;
    ++m_threadGeneration;
    ++m_listGeneration;
    m_unreplied = 0;
    m_selected.clear();
    m_thread.reset();
    m_composer.clear();
    m_mentioned.clear();
    m_retryNonce.clear();
    m_retryText.clear();
    m_retryThread.clear();
    m_sending = m_drafting = m_loading = false;
    m_error.clear();
    m_refreshFailed = false;
    m_threads->setRows({});
    m_entries->setRows({});
    Q_EMIT unrepliedCountChanged();
    Q_EMIT threadChanged();
    Q_EMIT composerChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeInboxView::refreshOnce()
{
    const QPointer<NativeInboxView> self(this);
    const int generation = m_listGeneration;
    const QString scope = m_scope;
    const QString view = m_view;
    const QString kind = m_kind;
    TarnInboxList list;
    try {
        list = co_await TarnInboxCalls::inbox(m_api, scope, view, kind);
    } catch (const TarnAPIError &error) {
        if (self) {
            fail(error);
            m_refreshFailed = true;
            setBusy(&m_loading, false);
            Q_EMIT refreshed();
        }
        co_return;
    }
    if (!self)
        co_return;
    if (m_refreshFailed) {
        m_refreshFailed = false;
        setError({});
    }
    if (generation == m_listGeneration) {
        m_threads->setRows(list.threads);
        if (m_unreplied != list.unreplied_count) {
            m_unreplied = int(list.unreplied_count);
            Q_EMIT unrepliedCountChanged();
        }
    }
    if (!m_selected.isEmpty()) {
        co_await loadThread(m_selected);
        if (!self)
            co_return;
    }
    setBusy(&m_loading, false);
    Q_EMIT refreshed();
}

QCoro::Task<> NativeInboxView::loadThread(QString id)
{
    const QPointer<NativeInboxView> self(this);
    const int generation = m_threadGeneration;
    try {
        TarnInboxThread thread = co_await TarnInboxCalls::inboxThread(m_api, id);
        if (self && generation == m_threadGeneration)
            showThread(std::move(thread));
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
}

void NativeInboxView::showThread(std::optional<TarnInboxThread> thread)
{
    if (m_thread == thread)
        return;
    QHash<QString, QString> names;
    if (thread) {
        for (const TarnInboxPerson &person : thread->mention_targets)
            names.insert(person.id, person.name);
    }
    m_entries->setNames(names);
    m_entries->setRows(thread ? thread->entries : QList<TarnInboxEntry>());
    m_thread = std::move(thread);
    Q_EMIT threadChanged();
}

void NativeInboxView::selectThread(const QString &id)
{
    if (id == m_selected)
        return;
    ++m_threadGeneration;
    m_selected = id;
    showThread(std::nullopt);
    m_mentioned.clear();
    setComposerText({});
    Q_EMIT threadChanged();
    if (!id.isEmpty())
        refreshOnce();
}

void NativeInboxView::closeThread()
{
    selectThread({});
}

void NativeInboxView::send()
{
    const QString text = m_composer.trimmed();
    if (m_sending || !canSend() || text.isEmpty())
        return;
    // An unchanged attempt is a retry: the same nonce lets the service
    // recognise a reply it already stored.
    if (m_retryNonce.isEmpty() || m_retryText != text || m_retryThread != m_selected) {
        m_retryNonce = QUuid::createUuid().toString(QUuid::WithoutBraces);
        m_retryText = text;
        m_retryThread = m_selected;
    }
    QStringList mentions;
    for (const TarnInboxPerson &person : m_thread->mention_targets) {
        if (m_mentioned.contains(person.id) && text.contains(u'@' + person.name))
            mentions.append(person.id);
    }
    setBusy(&m_sending, true);
    actionTask(m_selected, TarnInboxAction::reply(text, m_retryNonce, mentions));
}

void NativeInboxView::act(const TarnInboxAction &action)
{
    if (m_selected.isEmpty())
        return;
    actionTask(m_selected, action);
}

QCoro::Task<> NativeInboxView::actionTask(QString id, TarnInboxAction action)
{
    const QPointer<NativeInboxView> self(this);
    const bool replying = action.action == "reply"_L1;
    bool done = false;
    try {
        co_await TarnInboxCalls::inboxAction(m_api, id, action);
        done = true;
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (!self)
        co_return;
    if (done)
        setError({});
    if (replying) {
        if (done) {
            m_retryNonce.clear();
            m_mentioned.clear();
            if (m_selected == id && m_composer.trimmed() == action.body)
                setComposerText({});
        }
        setBusy(&m_sending, false);
    }
    // Read again whatever the answer: a refusal is often someone else's change.
    co_await refreshOnce();
    if (self)
        Q_EMIT actionFinished();
}

void NativeInboxView::draftWithPilo()
{
    if (m_drafting || !aiConfigured())
        return;
    setBusy(&m_drafting, true);
    assistTask(m_selected, m_composer);
}

QCoro::Task<> NativeInboxView::assistTask(QString id, QString draft)
{
    const QPointer<NativeInboxView> self(this);
    try {
        const TarnInboxAssist assist = co_await TarnInboxCalls::inboxAssist(m_api, id, draft);
        if (self && m_selected == id)
            setComposerText(assist.draft);
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (!self)
        co_return;
    setBusy(&m_drafting, false);
    Q_EMIT actionFinished();
}

void NativeInboxView::discardDraft(const QString &entryId)
{
    act(TarnInboxAction::discard(entryId));
}

void NativeInboxView::assign(const QString &personId)
{
    act(TarnInboxAction::assign(personId));
}

void NativeInboxView::clearAssignee()
{
    act(TarnInboxAction::clear());
}

void NativeInboxView::snooze(int choice)
{
    const QList<TarnSnoozeChoice> choices = presets();
    if (choice >= 0 && choice < choices.size())
        snoozeUntil(choices.at(choice).date);
}

void NativeInboxView::snoozeUntil(const QDateTime &until)
{
    act(TarnInboxAction::snooze(until.toString(Qt::ISODate)));
}

void NativeInboxView::markDone()
{
    act(TarnInboxAction::done());
}

void NativeInboxView::reopen()
{
    act(TarnInboxAction::reopen());
}

void NativeInboxView::createCustomer(const QString &name)
{
    if (!m_selected.isEmpty() && !hasCustomer())
        customerTask(m_selected, name.trimmed());
}

QCoro::Task<> NativeInboxView::customerTask(QString id, QString name)
{
    const QPointer<NativeInboxView> self(this);
    try {
        const QString board = customerBoard;
        co_await TarnInboxCalls::inboxCreateCustomer(m_api, id, board, name);
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (!self)
        co_return;
    co_await refreshOnce();
    if (self)
        Q_EMIT actionFinished();
}

void NativeInboxView::newConversation(const QString &address, const QString &clientId, const QString &kind)
{
    conversationTask(address.trimmed(), clientId, kind);
}

QCoro::Task<> NativeInboxView::conversationTask(QString address, QString clientId, QString kind)
{
    const QPointer<NativeInboxView> self(this);
    std::optional<TarnInboxCreated> created;
    try {
        created = co_await TarnInboxCalls::newInboxConversation(m_api, clientId, address, kind);
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (!self)
        co_return;
    if (created) {
        setError({});
        ++m_threadGeneration;
        m_selected = created->id;
        showThread(std::nullopt);
        setComposerText({});
        Q_EMIT threadChanged();
    }
    co_await refreshOnce();
    if (self)
        Q_EMIT actionFinished();
}

void NativeInboxView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeInboxView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeInboxView::setBusy(bool *flag, bool value)
{
    if (*flag == value)
        return;
    *flag = value;
    Q_EMIT busyChanged();
}
