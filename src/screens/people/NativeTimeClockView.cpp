#include "screens/people/NativeTimeClockView.h"

#include "screens/people/TarnPeopleCalls.h"
#include "screens/people/TimeClockRules.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QCoroTimer>
#include <QLocale>
#include <QPointer>
#include <QTimeZone>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<> pause(int ms)
{
    QTimer timer;
    timer.setSingleShot(true);
    timer.start(ms);
    co_await timer;
}

QDateTime typedTime(const QString &text)
{
    return QDateTime::fromString(text.trimmed(), u"yyyy-MM-dd HH:mm"_s);
}

} // namespace

NativeTimeClockView::NativeTimeClockView(TarnAPI &api, QObject *parent)
    : NativePeopleSection(parent)
    , m_api(api)
    , m_days(new NativeTimeClockDayModel(this))
    , m_entries(new NativeTimeEntryModel(this))
    , m_monday(TimeClockRules::weekStart(QDate::currentDate()))
{
}

NativeTimeClockView::~NativeTimeClockView() = default;

QString NativeTimeClockView::weekLabel() const
{
    const QLocale locale;
    return u"%1 – %2"_s.arg(
        locale.toString(m_monday, u"d MMM"_s), locale.toString(m_monday.addDays(6), u"d MMM yyyy"_s));
}

QString NativeTimeClockView::totalText() const
{
    return TimeClockRules::hoursText(m_totalSeconds);
}

bool NativeTimeClockView::ownClock() const
{
    return m_person.isEmpty() || (m_api.session() && m_api.session()->id == m_person);
}

bool NativeTimeClockView::canCorrect() const
{
    return m_api.session() && m_api.session()->owner.value_or(false);
}

void NativeTimeClockView::setPersonId(const QString &person)
{
    if (person == m_person)
        return;
    m_person = person;
    ++m_shown;
    refreshOnce();
}

void NativeTimeClockView::appear()
{
    refreshLoop(++m_generation);
}

void NativeTimeClockView::disappear()
{
    ++m_generation;
}

void NativeTimeClockView::refresh()
{
    refreshOnce();
}

void NativeTimeClockView::moveWeek(int weeks)
{
    const QDate next = weeks == 0 ? TimeClockRules::weekStart(QDate::currentDate()) : m_monday.addDays(7LL * weeks);
    if (next == m_monday)
        return;
    m_monday = next;
    ++m_shown;
    Q_EMIT weekChanged();
    refreshOnce();
}

void NativeTimeClockView::clear()
{
    ++m_generation;
    ++m_shown;
    m_week = {};
    m_person.clear();
    m_monday = TimeClockRules::weekStart(QDate::currentDate());
    m_totalSeconds = 0;
    m_days->setRows({});
    m_entries->setRows({});
    Q_EMIT weekChanged();
    resetStatus();
}

QCoro::Task<> NativeTimeClockView::refreshLoop(int generation)
{
    const QPointer<NativeTimeClockView> self(this);
    while (self && generation == m_generation) {
        co_await refreshOnce();
        if (!self || generation != m_generation)
            co_return;
        co_await pause(refreshIntervalMs);
    }
}

QCoro::Task<> NativeTimeClockView::refreshOnce()
{
    const QPointer<NativeTimeClockView> self(this);
    const int shown = m_shown;
    const QString week = m_monday.toString(Qt::ISODate);
    const std::optional<QString> person = m_person.isEmpty() ? std::nullopt : std::optional(m_person);
    try {
        const TarnTimeClockWeek answer = co_await TarnPeopleCalls::timeClock(m_api, week, person);
        if (!self || shown != m_shown)
            co_return;
        show(answer);
    } catch (const TarnAPIError &error) {
        if (!self || shown != m_shown)
            co_return;
        fail(error);
    }
    setLoaded();
    Q_EMIT refreshed();
}

void NativeTimeClockView::show(const TarnTimeClockWeek &week)
{
    m_week = week;
    const QDateTime now = QDateTime::currentDateTime();
    const TimeClockRules::WeekHours hours
        = TimeClockRules::weekHours(week.entries, m_monday, QTimeZone::systemTimeZone(), now);
    QList<TimeClockDay> days;
    for (int day = 0; day < 7; ++day) {
        const QDate date = m_monday.addDays(day);
        days.append({ date, hours.daySeconds.at(day), date == now.date() });
    }
    m_totalSeconds = hours.totalSeconds;
    m_days->setRows(days);
    m_entries->setRows(week.entries);
    Q_EMIT weekChanged();
}

void NativeTimeClockView::clockInOrOut()
{
    if (busy() || !ownClock())
        return;
    if (m_week.clocked_in)
        change([this] { return TarnPeopleCalls::clockOut(m_api); });
    else
        change([this] { return TarnPeopleCalls::clockIn(m_api); });
}

QCoro::Task<> NativeTimeClockView::change(std::function<QCoro::Task<TarnTimeEntry>()> call)
{
    // The week as the service now has it, also after a refusal (clocked in
    // on another device meanwhile, or corrected by another owner).
    return changeAndReload([call]() -> QCoro::Task<> { (void)co_await call(); }, [this] { return refreshOnce(); });
}

void NativeTimeClockView::correctEntry(
    const QString &entryId, const QString &clockIn, const QString &clockOut, const QString &reason)
{
    const auto at = std::find_if(m_week.entries.cbegin(), m_week.entries.cend(),
        [&](const TarnTimeEntry &entry) { return entry.id == entryId; });
    if (at == m_week.entries.cend() || busy())
        return;
    const QDateTime in = typedTime(clockIn);
    const QDateTime out = clockOut.trimmed().isEmpty() ? QDateTime() : typedTime(clockOut);
    if (!clockOut.trimmed().isEmpty() && !out.isValid()) {
        setError(u"The clock-out time is not a time."_s);
        return;
    }
    const QString problem = TimeClockRules::editProblem(in, out, reason, QDateTime::currentDateTime());
    if (!problem.isEmpty()) {
        setError(problem);
        return;
    }
    change([this, entryId,
               edit = TarnTimeEntryEdit { .clock_in = in.toUTC().toString(Qt::ISODateWithMs),
                   .clock_out = out.isValid() ? out.toUTC().toString(Qt::ISODateWithMs) : QString(),
                   .reason = reason.trimmed(),
                   .version = at->version }] { return TarnPeopleCalls::editTimeEntry(m_api, entryId, edit); });
}
