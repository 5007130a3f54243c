#include "screens/schedule/ScheduleRules.h"

#include <QLocale>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

constexpr int dayMinutes = 24 * 60;

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
    QList<TarnCalendarEvent> sorted = events;
    std::stable_sort(sorted.begin(), sorted.end(), [](const TarnCalendarEvent &a, const TarnCalendarEvent &b) {
        return a.all_day != b.all_day ? a.all_day : a.start_at < b.start_at;
    });
    const QLocale english(QLocale::English);
    QList<ScheduleDay> week;
    for (int i = 0; i < 7; ++i) {
        const QDate day = monday.addDays(i);
        ScheduleDay row { .date = day.toString(Qt::ISODate),
            .label = english.toString(day, u"ddd d"_s),
            .today = day == today,
            .events = {} };
        for (const TarnCalendarEvent &event : std::as_const(sorted)) {
            const std::optional<Placement> placed = placeOn(event, day, zone);
            if (!placed)
                continue;
            row.events.append(QVariantMap { { u"eventId"_s, event.id }, { u"title"_s, event.title },
                { u"kind"_s, event.kind }, { u"location"_s, event.location.value_or(QString()) },
                { u"client"_s, event.client_name.value_or(QString()) }, { u"time"_s, timeLabel(event, zone) },
                { u"allDay"_s, event.all_day }, { u"start"_s, placed->start }, { u"end"_s, placed->end } });
        }
        week.append(row);
    }
    return week;
}

} // namespace ScheduleRules
