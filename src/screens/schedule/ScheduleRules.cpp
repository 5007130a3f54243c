#include "screens/schedule/ScheduleRules.h"

#include <QLocale>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

constexpr int dayMinutes = 24 * 60;
constexpr qsizetype longestTitle = 100;
constexpr qsizetype longestLocation = 200;

QDateTime instant(const QString &iso, const QTimeZone &zone)
{
    return QDateTime::fromString(iso, Qt::ISODateWithMs).toTimeZone(zone);
}

// The wall-clock minutes of an instant on `day`: 0 before the day began,
// a whole day after it ended.
int minutesOn(const QDateTime &at, const QDate &day)
{
    if (at.date() < day)
        return 0;
    if (at.date() > day)
        return dayMinutes;
    return at.time().hour() * 60 + at.time().minute();
}

// All-day events first, then by start.
QList<TarnCalendarEvent> byStart(const QList<TarnCalendarEvent> &events)
{
    QList<TarnCalendarEvent> sorted = events;
    std::stable_sort(sorted.begin(), sorted.end(), [](const TarnCalendarEvent &a, const TarnCalendarEvent &b) {
        return a.all_day != b.all_day ? a.all_day : a.start_at < b.start_at;
    });
    return sorted;
}

} // namespace

namespace ScheduleRules {

QDate weekStart(const QDate &day)
{
    return day.addDays(1 - day.dayOfWeek());
}

std::pair<QDateTime, QDateTime> weekRange(const QDate &monday, const QTimeZone &zone)
{
    return { monday.startOfDay(zone), monday.addDays(7).startOfDay(zone) };
}

QString weekLabel(const QDate &monday)
{
    const QLocale english(QLocale::English);
    const QDate sunday = monday.addDays(6);
    if (monday.year() != sunday.year())
        return english.toString(monday, u"d MMMM yyyy"_s) + u" – "_s + english.toString(sunday, u"d MMMM yyyy"_s);
    if (monday.month() != sunday.month())
        return english.toString(monday, u"d MMMM"_s) + u" – "_s + english.toString(sunday, u"d MMMM yyyy"_s);
    return QString::number(monday.day()) + u" – "_s + english.toString(sunday, u"d MMMM yyyy"_s);
}

std::optional<Placement> placeOn(const TarnCalendarEvent &event, const QDate &day, const QTimeZone &zone)
{
    const QDateTime start = instant(event.start_at, zone);
    const QDateTime end = instant(event.end_at, zone);
    if (!start.isValid() || !end.isValid())
        return std::nullopt;
    if (event.all_day) {
        // Ends at the local midnight after its last day.
        if (start.date() <= day && day < std::max(end.date(), start.date().addDays(1)))
            return Placement { 0, dayMinutes };
        return std::nullopt;
    }
    if (end <= day.startOfDay(zone) || start >= day.addDays(1).startOfDay(zone))
        return std::nullopt;
    const Placement placed { minutesOn(start, day), minutesOn(end, day) };
    // An event of no length still shows as a line.
    return Placement { placed.start, std::max(placed.end, placed.start) };
}

QString timeLabel(const TarnCalendarEvent &event, const QTimeZone &zone)
{
    if (event.all_day)
        return u"All day"_s;
    const QString start = instant(event.start_at, zone).toString(u"HH:mm"_s);
    const QString end = instant(event.end_at, zone).toString(u"HH:mm"_s);
    return start == end ? start : start + u" – "_s + end;
}

QList<ScheduleDay> days(
    const QDate &monday, const QList<TarnCalendarEvent> &events, const QTimeZone &zone, const QDate &today)
{
    const QList<TarnCalendarEvent> sorted = byStart(events);
    const QLocale english(QLocale::English);
    QList<ScheduleDay> week;
    for (int i = 0; i < 7; ++i) {
        const QDate day = monday.addDays(i);
        ScheduleDay row { .date = day.toString(Qt::ISODate),
            .label = english.toString(day, u"ddd d"_s),
            .today = day == today,
            .events = {} };
        for (const TarnCalendarEvent &event : sorted) {
            const std::optional<Placement> placed = placeOn(event, day, zone);
            if (!placed)
                continue;
            row.events.append(QVariantMap { { u"eventId"_s, event.id }, { u"title"_s, event.title },
                { u"kind"_s, event.kind }, { u"location"_s, event.location.value_or(QString()) },
                { u"client"_s, event.client_name.value_or(QString()) }, { u"time"_s, timeLabel(event, zone) },
                { u"allDay"_s, event.all_day }, { u"calendar"_s, event.calendar }, { u"start"_s, placed->start },
                { u"end"_s, placed->end } });
        }
        week.append(row);
    }
    return week;
}

QDate monthStart(const QDate &day)
{
    return QDate(day.year(), day.month(), 1);
}

std::pair<QDateTime, QDateTime> monthRange(const QDate &first, const QTimeZone &zone)
{
    const QDate start = weekStart(first);
    return { start.startOfDay(zone), start.addDays(monthGridDays).startOfDay(zone) };
}

QString monthLabel(const QDate &first)
{
    return QLocale(QLocale::English).toString(first, u"MMMM yyyy"_s);
}

QList<ScheduleMonthDay> monthDays(
    const QDate &first, const QList<TarnCalendarEvent> &events, const QTimeZone &zone, const QDate &today)
{
    const QList<TarnCalendarEvent> sorted = byStart(events);
    const QLocale english(QLocale::English);
    const QDate start = weekStart(first);
    QList<ScheduleMonthDay> grid;
    grid.reserve(monthGridDays);
    for (int i = 0; i < monthGridDays; ++i) {
        const QDate day = start.addDays(i);
        ScheduleMonthDay row { .date = day.toString(Qt::ISODate),
            .weekday = english.toString(day, u"ddd"_s),
            .number = day.day(),
            .inMonth = day.month() == first.month(),
            .today = day == today,
            .count = 0,
            .titles = {} };
        for (const TarnCalendarEvent &event : sorted) {
            if (!placeOn(event, day, zone))
                continue;
            if (++row.count <= monthTitles)
                row.titles.append(QVariantMap { { u"title"_s, event.title }, { u"calendar"_s, event.calendar } });
        }
        grid.append(row);
    }
    return grid;
}

std::variant<TarnCalendarEventDraft, QString> eventDraft(const QString &title, const QString &day, const QString &start,
    const QString &end, const QString &location, const QTimeZone &zone)
{
    const QString named = title.simplified();
    if (named.isEmpty() || named.size() > longestTitle)
        return u"Give the event a title of up to 100 characters."_s;
    const QDate date = QDate::fromString(day.trimmed(), Qt::ISODate);
    if (!date.isValid())
        return u"Write the day as 2026-11-30."_s;
    const QTime from = QTime::fromString(start.trimmed(), u"H:mm"_s);
    const QTime to = QTime::fromString(end.trimmed(), u"H:mm"_s);
    if (!from.isValid() || !to.isValid())
        return u"Write the times as 09:30, on a 24-hour clock."_s;
    if (to <= from)
        return u"The event ends after it starts, on the same day."_s;
    const QDateTime startAt(date, from, zone);
    const QDateTime endAt(date, to, zone);
    // Qt makes a skipped wall time invalid, or moves it past the gap.
    if (!startAt.isValid() || !endAt.isValid() || startAt.time() != from || endAt.time() != to)
        return u"The clocks change then: that time does not exist on that day."_s;
    const QString place = location.simplified();
    if (place.size() > longestLocation)
        return u"Keep the location to 200 characters."_s;
    return TarnCalendarEventDraft { .title = named,
        .start_at = startAt.toUTC().toString(Qt::ISODate),
        .end_at = endAt.toUTC().toString(Qt::ISODate),
        .location = place };
}

} // namespace ScheduleRules
