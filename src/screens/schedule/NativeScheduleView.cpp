#include "screens/schedule/NativeScheduleView.h"

#include "mail/TarnMailCalls.h"
#include "screens/schedule/ScheduleRules.h"
#include "screens/schedule/TarnScheduleCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr int noticeMs = 3'000;
constexpr int shortestBooking = 15;
constexpr int longestBooking = 240;
const QString modeKey = u"schedule/mode"_s;
const QString notConnected = u"Google Calendar is not connected: showing the workspace's events only."_s;

} // namespace

NativeScheduleView::NativeScheduleView(TarnAPI &api, QSettings &settings, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_settings(settings)
    , m_days(new NativeScheduleDayModel(this))
    , m_month(new NativeScheduleMonthModel(this))
    , m_links(new NativeBookingLinkModel(this))
    , m_bookings(new NativeBookingModel(this))
    , m_mode(settings.value(modeKey).toString() == monthMode ? QString(monthMode) : QString(weekMode))
    , m_monday(ScheduleRules::weekStart(QDate::currentDate()))
    , m_first(ScheduleRules::monthStart(QDate::currentDate()))
{
    m_noticeTimer.setSingleShot(true);
    m_noticeTimer.setInterval(noticeMs);
    connect(&m_noticeTimer, &QTimer::timeout, this, [this] { say({}); });
}

QString NativeScheduleView::weekLabel() const
{
    return ScheduleRules::weekLabel(m_monday);
}

bool NativeScheduleView::thisWeekShown() const
{
    return m_monday == ScheduleRules::weekStart(QDate::currentDate());
}

void NativeScheduleView::setMode(const QString &mode)
{
    if (mode == weekMode || mode == monthMode)
        show(mode, m_monday, m_first);
}

QString NativeScheduleView::monthLabel() const
{
    return ScheduleRules::monthLabel(m_first);
}

bool NativeScheduleView::thisMonthShown() const
{
    return m_first == ScheduleRules::monthStart(QDate::currentDate());
}

QString NativeScheduleView::openLinkTitle() const
{
    for (const TarnBookingLink &link : m_links->rows()) {
        if (link.id == m_openLink)
            return link.title;
    }
    return {};
}

void NativeScheduleView::setTimeZone(const QTimeZone &zone)
{
    m_zone = zone;
}

void NativeScheduleView::appear()
{
    m_shown = true;
    TarnRefreshLoop::run(
        this, &NativeScheduleView::m_generation, ++m_generation, refreshIntervalMs, &NativeScheduleView::refreshOnce);
}

void NativeScheduleView::disappear()
{
    m_shown = false;
    ++m_generation;
}

void NativeScheduleView::refresh()
{
    refreshOnce();
}

void NativeScheduleView::previousWeek()
{
    showWeek(m_monday.addDays(-7));
}

void NativeScheduleView::nextWeek()
{
    showWeek(m_monday.addDays(7));
}

void NativeScheduleView::thisWeek()
{
    showWeek(ScheduleRules::weekStart(QDate::currentDate()));
}

void NativeScheduleView::previousMonth()
{
    showMonth(m_first.addMonths(-1));
}

void NativeScheduleView::nextMonth()
{
    showMonth(m_first.addMonths(1));
}

void NativeScheduleView::thisMonth()
{
    showMonth(ScheduleRules::monthStart(QDate::currentDate()));
}

void NativeScheduleView::openDay(const QString &date)
{
    const QDate day = QDate::fromString(date, Qt::ISODate);
    if (day.isValid())
        show(QString(weekMode), ScheduleRules::weekStart(day), m_first);
}

void NativeScheduleView::showWeek(const QDate &monday)
{
    show(m_mode, monday, m_first);
}

void NativeScheduleView::showMonth(const QDate &first)
{
    show(m_mode, m_monday, first);
}

void NativeScheduleView::show(const QString &mode, const QDate &monday, const QDate &first)
{
    if (mode == m_mode && monday == m_monday && first == m_first)
        return;
    const bool otherMode = mode != m_mode;
    m_mode = mode;
    m_monday = monday;
    m_first = first;
    if (otherMode) {
        m_settings.setValue(modeKey, m_mode);
        Q_EMIT modeChanged();
    }
    ++m_weekGeneration;
    // The days show at once, empty, and fill when their events arrive.
    if (m_mode == monthMode)
        m_month->setRows(ScheduleRules::monthDays(m_first, {}, m_zone, QDate::currentDate()));
    else
        m_days->setRows(ScheduleRules::days(m_monday, {}, m_zone, QDate::currentDate()));
    m_eventCount = 0;
    Q_EMIT weekChanged();
    Q_EMIT eventsChanged();
    if (m_shown)
        readWeek();
}

void NativeScheduleView::openLink(const QString &linkId)
{
    if (linkId == m_openLink)
        return;
    m_openLink = linkId;
    m_bookings->setRows({});
    Q_EMIT linkChanged();
    readBookings(linkId);
}

void NativeScheduleView::closeLink()
{
    if (m_openLink.isEmpty())
        return;
    m_openLink.clear();
    m_bookings->setRows({});
    Q_EMIT linkChanged();
}

void NativeScheduleView::createLink(const QString &title, int minutes)
{
    if (m_busy)
        return;
    const QString trimmed = title.simplified();
    if (trimmed.isEmpty()) {
        setError(u"Give the link a title."_s);
        return;
    }
    if (minutes < shortestBooking || minutes > longestBooking) {
        setError(u"A booking lasts from 15 minutes to 4 hours."_s);
        return;
    }
    m_busy = true;
    Q_EMIT busyChanged();
    createTask(TarnBookingLinkDraft { .title = trimmed, .duration = minutes });
}

void NativeScheduleView::createEvent(
    const QString &title, const QString &day, const QString &start, const QString &end, const QString &location)
{
    if (m_busy)
        return;
    if (!m_google) {
        setError(u"Connect Google Calendar to add events."_s);
        return;
    }
    std::variant<TarnCalendarEventDraft, QString> draft
        = ScheduleRules::eventDraft(title, day, start, end, location, m_zone);
    if (const QString *refusal = std::get_if<QString>(&draft)) {
        setError(*refusal);
        return;
    }
    m_busy = true;
    Q_EMIT busyChanged();
    createEventTask(std::get<TarnCalendarEventDraft>(std::move(draft)));
}

QString NativeScheduleView::suggestedDay() const
{
    const QDate today = QDate::currentDate();
    const bool monthShown = m_mode == monthMode;
    const bool todayShown
        = monthShown ? ScheduleRules::monthStart(today) == m_first : ScheduleRules::weekStart(today) == m_monday;
    return (todayShown ? today : monthShown ? m_first : m_monday).toString(Qt::ISODate);
}

void NativeScheduleView::copyLink(const QString &linkId)
{
    for (const TarnBookingLink &link : m_links->rows()) {
        if (link.id != linkId)
            continue;
        if (QClipboard *clipboard = QGuiApplication::clipboard())
            clipboard->setText(link.url);
        say(u"Link copied"_s);
        return;
    }
}

void NativeScheduleView::clear()
{
    m_shown = false;
    ++m_generation;
    ++m_weekGeneration;
    m_monday = ScheduleRules::weekStart(QDate::currentDate());
    m_first = ScheduleRules::monthStart(QDate::currentDate());
    m_days->setRows({});
    m_month->setRows({});
    m_links->setRows({});
    m_bookings->setRows({});
    m_eventCount = 0;
    setGoogle(false, {});
    m_openLink.clear();
    m_busy = m_loading = m_loaded = false;
    m_error.clear();
    say({});
    Q_EMIT weekChanged();
    Q_EMIT eventsChanged();
    Q_EMIT linkChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeScheduleView::refreshOnce()
{
    const QPointer<NativeScheduleView> self(this);
    const int generation = m_generation;
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    co_await readGoogleStatus();
    if (!self || generation != m_generation)
        co_return;
    co_await readWeek();
    if (!self || generation != m_generation)
        co_return;
    try {
        const QList<TarnBookingLink> links = co_await TarnScheduleCalls::bookingLinks(m_api);
        if (!self || generation != m_generation)
            co_return;
        m_links->setRows(links);
        if (!m_openLink.isEmpty())
            co_await readBookings(m_openLink);
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    if (!self)
        co_return;
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

QCoro::Task<> NativeScheduleView::readWeek()
{
    const QPointer<NativeScheduleView> self(this);
    const int week = m_weekGeneration;
    const bool monthShown = m_mode == monthMode;
    const auto [from, to]
        = monthShown ? ScheduleRules::monthRange(m_first, m_zone) : ScheduleRules::weekRange(m_monday, m_zone);
    try {
        const QList<TarnCalendarEvent> events = co_await readEvents(from, to);
        if (!self || week != m_weekGeneration)
            co_return;
        setError({});
        if (monthShown)
            m_month->setRows(ScheduleRules::monthDays(m_first, events, m_zone, QDate::currentDate()));
        else
            m_days->setRows(ScheduleRules::days(m_monday, events, m_zone, QDate::currentDate()));
        if (m_eventCount != events.size()) {
            m_eventCount = int(events.size());
            Q_EMIT eventsChanged();
        }
    } catch (const TarnAPIError &error) {
        if (self && week == m_weekGeneration)
            fail(error);
    }
}

QCoro::Task<> NativeScheduleView::readGoogleStatus()
{
    const QPointer<NativeScheduleView> self(this);
    try {
        const TarnMailStatus status = co_await TarnMailCalls::status(m_api);
        if (!self)
            co_return;
        const bool connected = status.configured && status.calendar;
        setGoogle(connected, connected ? QString() : notConnected);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        if (error.kind() == TarnAPIError::Kind::signedOut)
            fail(error);
        else
            setGoogle(false, notConnected);
    }
}

QCoro::Task<QList<TarnCalendarEvent>> NativeScheduleView::readEvents(QDateTime from, QDateTime to)
{
    const QPointer<NativeScheduleView> self(this);
    QList<TarnCalendarEvent> events = co_await TarnScheduleCalls::calendarEvents(m_api, from, to);
    if (!self || !m_google)
        co_return events;
    try {
        const TarnGoogleEvents google = co_await TarnScheduleCalls::googleEvents(m_api, from, to);
        events.append(google.events);
    } catch (const TarnAPIError &error) {
        if (error.kind() == TarnAPIError::Kind::signedOut)
            throw;
        if (self)
            setGoogle(
                true, u"Google Calendar didn't load: showing the workspace's events only. %1"_s.arg(error.text()));
    }
    co_return events;
}

QCoro::Task<> NativeScheduleView::createEventTask(TarnCalendarEventDraft draft)
{
    const QPointer<NativeScheduleView> self(this);
    try {
        const TarnCalendarEvent event = co_await TarnScheduleCalls::createGoogleEvent(m_api, draft);
        if (!self)
            co_return;
        setError({});
        say(u"Event added to Google Calendar"_s);
        Q_EMIT eventCreated(event.id);
        readWeek();
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    m_busy = false;
    Q_EMIT busyChanged();
}

QCoro::Task<> NativeScheduleView::readBookings(QString linkId)
{
    const QPointer<NativeScheduleView> self(this);
    try {
        const QList<TarnBooking> bookings = co_await TarnScheduleCalls::bookingLinkBookings(m_api, linkId);
        if (self && linkId == m_openLink)
            m_bookings->setRows(bookings);
    } catch (const TarnAPIError &error) {
        if (self && linkId == m_openLink)
            fail(error);
    }
}

QCoro::Task<> NativeScheduleView::createTask(TarnBookingLinkDraft draft)
{
    const QPointer<NativeScheduleView> self(this);
    try {
        const TarnBookingLink link = co_await TarnScheduleCalls::createBookingLink(m_api, draft);
        if (!self)
            co_return;
        QList<TarnBookingLink> links = m_links->rows();
        links.prepend(link);
        m_links->setRows(links);
        setError({});
        say(u"Link created"_s);
        Q_EMIT linkCreated(link.id);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    m_busy = false;
    Q_EMIT busyChanged();
}

void NativeScheduleView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeScheduleView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeScheduleView::setGoogle(bool connected, const QString &note)
{
    if (m_google == connected && m_calendarNote == note)
        return;
    m_google = connected;
    m_calendarNote = note;
    Q_EMIT googleChanged();
}

void NativeScheduleView::say(const QString &text)
{
    if (!text.isEmpty())
        m_noticeTimer.start();
    if (m_notice == text)
        return;
    m_notice = text;
    Q_EMIT noticeChanged();
}
