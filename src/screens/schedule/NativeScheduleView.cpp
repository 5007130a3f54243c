#include "screens/schedule/NativeScheduleView.h"

#include "screens/schedule/ScheduleRules.h"
#include "screens/schedule/TarnScheduleCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeStateErrors.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

constexpr int noticeMs = 3'000;
constexpr int shortestBooking = 15;
constexpr int longestBooking = 240;

} // namespace

NativeScheduleView::NativeScheduleView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_days(new NativeScheduleDayModel(this))
    , m_links(new NativeBookingLinkModel(this))
    , m_bookings(new NativeBookingModel(this))
    , m_monday(ScheduleRules::weekStart(QDate::currentDate()))
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
    TarnRefreshLoop::run(
        this, &NativeScheduleView::m_generation, ++m_generation, refreshIntervalMs, &NativeScheduleView::refreshOnce);
}

void NativeScheduleView::disappear()
{
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

void NativeScheduleView::showWeek(const QDate &monday)
{
    if (monday == m_monday)
        return;
    m_monday = monday;
    ++m_weekGeneration;
    // The days show at once, empty, and fill when the week's events arrive.
    m_days->setRows(ScheduleRules::days(m_monday, {}, m_zone, QDate::currentDate()));
    m_eventCount = 0;
    Q_EMIT weekChanged();
    Q_EMIT eventsChanged();
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
    ++m_generation;
    ++m_weekGeneration;
    m_monday = ScheduleRules::weekStart(QDate::currentDate());
    m_days->setRows({});
    m_links->setRows({});
    m_bookings->setRows({});
    m_eventCount = 0;
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
    if (!m_loaded && !m_loading) {
        m_loading = true;
        Q_EMIT busyChanged();
    }
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
    if (m_loading || !m_loaded) {
        m_loading = false;
        m_loaded = true;
        Q_EMIT busyChanged();
    }
    Q_EMIT refreshed();
}

QCoro::Task<> NativeScheduleView::readWeek()
{
    const QPointer<NativeScheduleView> self(this);
    const int week = m_weekGeneration;
    const auto [from, to] = ScheduleRules::weekRange(m_monday, m_zone);
    try {
        const QList<TarnCalendarEvent> events = co_await TarnScheduleCalls::calendarEvents(m_api, from, to);
        if (!self || week != m_weekGeneration)
            co_return;
        setError({});
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

void NativeScheduleView::say(const QString &text)
{
    if (!text.isEmpty())
        m_noticeTimer.start();
    if (m_notice == text)
        return;
    m_notice = text;
    Q_EMIT noticeChanged();
}
