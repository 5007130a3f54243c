#include "screens/workplan/NativeWorkPlanView.h"

#include "screens/workplan/TarnWorkPlanCalls.h"
#include "screens/workplan/WorkPlanRules.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QPointer>
#include <QVariantMap>

#include <algorithm>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

constexpr int refreshMs = 60'000;

} // namespace

NativeWorkPlanView::NativeWorkPlanView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_entries(new NativeWorkEntryModel(this))
    , m_people(new NativeWorkPersonModel(this))
    , m_notes(new NativeCoachNoteModel(this))
    , m_week(WorkPlanRules::weekOf(QDate::currentDate()))
{
    m_refresh.setInterval(refreshMs);
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        if (m_pending == 0)
            load(++m_generation);
    });
}

QString NativeWorkPlanView::weekLabel() const
{
    return WorkPlanRules::weekLabel(m_week);
}

bool NativeWorkPlanView::thisWeek() const
{
    return m_week == WorkPlanRules::weekOf(QDate::currentDate());
}

QVariantList NativeWorkPlanView::days() const
{
    QVariantList out;
    for (int at = 0; at < 7; ++at) {
        const QString day = m_week.addDays(at).toString(Qt::ISODate);
        out.append(QVariantMap { { u"day"_s, day }, { u"label"_s, WorkPlanRules::dayLabel(day) } });
    }
    return out;
}

QString NativeWorkPlanView::personName() const
{
    for (const TarnWorkPlanPerson &who : m_plan.people)
        if (who.id == m_person)
            return who.name;
    return {};
}

QString NativeWorkPlanView::myId() const
{
    return m_api.session() ? m_api.session()->id : QString();
}

int NativeWorkPlanView::planned() const
{
    return int(m_entries->rows().size());
}

int NativeWorkPlanView::done() const
{
    const QList<WorkPlanRow> &rows = m_entries->rows();
    return int(std::count_if(rows.begin(), rows.end(), [](const WorkPlanRow &row) { return row.entry.done; }));
}

void NativeWorkPlanView::setPerson(const QString &person)
{
    if (m_person == person)
        return;
    m_person = person;
    Q_EMIT personChanged();
    show(m_plan);
}

void NativeWorkPlanView::appear()
{
    m_refresh.start();
    if (!m_loaded) {
        m_loading = true;
        Q_EMIT busyChanged();
    }
    load(++m_generation);
}

void NativeWorkPlanView::disappear()
{
    m_refresh.stop();
    ++m_generation;
    if (m_loading) {
        m_loading = false;
        Q_EMIT busyChanged();
    }
}

void NativeWorkPlanView::clear()
{
    m_refresh.stop();
    ++m_generation;
    m_week = WorkPlanRules::weekOf(QDate::currentDate());
    m_person.clear();
    m_plan = {};
    show(m_plan);
    m_loading = m_loaded = false;
    m_pending = 0;
    m_error.clear();
    m_errorFromRead = false;
    Q_EMIT weekChanged();
    Q_EMIT personChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

void NativeWorkPlanView::previousWeek()
{
    showWeek(m_week.addDays(-7));
}

void NativeWorkPlanView::nextWeek()
{
    showWeek(m_week.addDays(7));
}

void NativeWorkPlanView::showThisWeek()
{
    showWeek(WorkPlanRules::weekOf(QDate::currentDate()));
}

void NativeWorkPlanView::showWeek(const QDate &monday)
{
    if (monday == m_week)
        return;
    m_week = monday;
    // The other week's entries stay under the placeholder until this one's come.
    m_loading = true;
    Q_EMIT weekChanged();
    Q_EMIT busyChanged();
    load(++m_generation);
}

QCoro::Task<> NativeWorkPlanView::load(int generation)
{
    const QPointer<NativeWorkPlanView> self(this);
    const QString week = this->week();
    try {
        const TarnWorkPlan plan = co_await TarnWorkPlanCalls::workPlan(m_api, week);
        // A change under way reads the week again when it ends.
        if (!self || generation != m_generation || m_pending > 0)
            co_return;
        show(plan);
        if (m_errorFromRead)
            setError({});
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        if (error.kind() == TarnAPIError::Kind::signedOut)
            Q_EMIT signedOut();
        else
            setError(error.text(), true);
    }
    m_loading = false;
    m_loaded = true;
    Q_EMIT busyChanged();
    Q_EMIT refreshed();
}

void NativeWorkPlanView::show(const TarnWorkPlan &plan)
{
    m_plan = plan;
    const auto chosen = std::find_if(m_plan.people.begin(), m_plan.people.end(),
        [this](const TarnWorkPlanPerson &who) { return who.id == m_person; });
    m_people->setRows(WorkPlanRules::progress(m_plan));
    m_entries->setRows(WorkPlanRules::rows(m_plan, m_person));
    m_notes->setRows(chosen == m_plan.people.end() ? QList<TarnCoachNote>() : chosen->coach_notes);
    Q_EMIT planChanged();
    Q_EMIT personChanged();
}

const TarnWorkEntry *NativeWorkPlanView::entry(const QString &id) const
{
    for (const TarnWorkPlanPerson &who : m_plan.people)
        for (const TarnWorkEntry &e : who.entries)
            if (e.id == id)
                return &e;
    return nullptr;
}

void NativeWorkPlanView::changeEntry(const QString &id, const std::function<void(TarnWorkEntry &)> &edit)
{
    TarnWorkPlan next = m_plan;
    for (TarnWorkPlanPerson &who : next.people)
        for (TarnWorkEntry &e : who.entries)
            if (e.id == id)
                edit(e);
    show(next);
}

void NativeWorkPlanView::complete(const QString &entryId, bool done)
{
    const TarnWorkEntry *shown = entry(entryId);
    if (!shown || shown->done == done)
        return;
    changeEntry(entryId, [done](TarnWorkEntry &e) { e.done = done; });
    setPending(m_pending + 1);
    const TarnWorkEntryCompletion completion { done };
    sent(TarnWorkPlanCalls::completeWorkEntry(m_api, entryId, completion));
}

void NativeWorkPlanView::addAdminTask(const QString &title, const QString &day, const QString &notes)
{
    if (busy())
        return;
    setPending(m_pending + 1);
    const TarnAdminTaskDraft draft { m_person.isEmpty() ? myId() : m_person, title, day, notes };
    sent(TarnWorkPlanCalls::createAdminTask(m_api, draft));
}

void NativeWorkPlanView::editAdminTask(
    const QString &entryId, const QString &title, const QString &day, const QString &notes)
{
    const TarnWorkEntry *shown = entry(entryId);
    if (busy() || !shown || shown->kind != "admin"_L1)
        return;
    const qint64 version = shown->version;
    changeEntry(entryId, [&](TarnWorkEntry &e) {
        e.title = title.simplified();
        e.day = day;
        e.notes = notes.trimmed();
    });
    setPending(m_pending + 1);
    const TarnAdminTaskUpdate update { title, day, notes, version };
    sent(TarnWorkPlanCalls::updateAdminTask(m_api, entryId, update));
}

void NativeWorkPlanView::addReminder(const QString &title, const QString &day, const QString &time)
{
    if (busy())
        return;
    const std::optional<QString> at = WorkPlanRules::normalizedTime(time);
    if (!at) {
        setError(u"A time is written like 9:30 or 14:00."_s);
        return;
    }
    setPending(m_pending + 1);
    const TarnReminderDraft draft { m_person.isEmpty() ? myId() : m_person, title, day,
        at->isEmpty() ? std::nullopt : at };
    sent(TarnWorkPlanCalls::createReminder(m_api, draft));
}

void NativeWorkPlanView::addCoachNote(const QString &body)
{
    if (busy() || m_person.isEmpty() || !mayCoach())
        return;
    setPending(m_pending + 1);
    const TarnCoachNoteDraft note { week(), body };
    sent(TarnWorkPlanCalls::addCoachNote(m_api, m_person, note));
}

template <typename Answer> QCoro::Task<> NativeWorkPlanView::sent(QCoro::Task<Answer> change)
{
    const QPointer<NativeWorkPlanView> self(this);
    QString refusal;
    try {
        const Answer answered = co_await change;
        if (!self)
            co_return;
        if constexpr (std::is_same_v<Answer, TarnWorkEntry>)
            changeEntry(answered.id, [&answered](TarnWorkEntry &e) { e = answered; });
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        refusal = refusalOf(error);
    }
    co_await settle(refusal);
}

QCoro::Task<> NativeWorkPlanView::settle(QString refusal)
{
    const QPointer<NativeWorkPlanView> self(this);
    setPending(m_pending - 1);
    co_await load(++m_generation);
    if (!self)
        co_return;
    // A failed read after a change that went through keeps its own text.
    if (!refusal.isEmpty() || !m_errorFromRead)
        setError(refusal);
    Q_EMIT actionFinished();
}

QString NativeWorkPlanView::refusalOf(const TarnAPIError &error)
{
    if (error.kind() == TarnAPIError::Kind::signedOut) {
        Q_EMIT signedOut();
        return {};
    }
    return error.text();
}

void NativeWorkPlanView::setError(const QString &text, bool fromRead)
{
    m_errorFromRead = fromRead && !text.isEmpty();
    if (m_error == text)
        return;
    m_error = text;
    Q_EMIT errorTextChanged();
}

void NativeWorkPlanView::setPending(int pending)
{
    const bool was = busy();
    // A change sent before clear() may still end after it.
    m_pending = std::max(pending, 0);
    if (was != busy())
        Q_EMIT busyChanged();
}
