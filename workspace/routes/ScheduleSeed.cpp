#include "workspace/routes/ScheduleSeed.h"

#include "workspace/routes/ScheduleGoogle.h"
#include "workspace/routes/ScheduleStore.h"

#include <QDateTime>
#include <QString>

using namespace Qt::StringLiterals;

namespace {

// A week's shape for one person: the weekday (1 Monday), the local start
// and length in minutes, and what it is.
struct Slot {
    int weekday;
    QTime start;
    int minutes;
    QLatin1StringView title;
    QLatin1StringView kind;
    QLatin1StringView location;
    QLatin1StringView clientId;
};

struct Pattern {
    QLatin1StringView personId;
    QList<Slot> shape;
};

const QList<Pattern> &patterns()
{
    static const QList<Pattern> all {
        { "p-maren"_L1,
            {
                { 1, QTime(9, 0), 30, "Team stand-up"_L1, "meeting"_L1, "Studio"_L1, {} },
                { 1, QTime(13, 0), 60, "Brightwater Dental quarterly review"_L1, "meeting"_L1, "Video call"_L1,
                    "c-brightwater"_L1 },
                { 2, QTime(8, 30), 150, "Focus: month-end books"_L1, "focus"_L1, {}, {} },
                { 2, QTime(14, 0), 30, "Call with Oakline Studio"_L1, "call"_L1, {}, "c-oakline"_L1 },
                { 3, QTime(10, 0), 60, "Proposal walkthrough with Fernhill Bakery"_L1, "meeting"_L1,
                    "Fernhill Bakery, Mill Lane"_L1, "c-fernhill"_L1 },
                { 3, QTime(16, 0), 30, "One-to-one with Tomas"_L1, "meeting"_L1, "Studio"_L1, {} },
                { 4, QTime(11, 30), 45, "Marlow & Sons renewal"_L1, "call"_L1, {}, "c-marlow"_L1 },
                { 5, QTime(9, 0), 30, "Team stand-up"_L1, "meeting"_L1, "Studio"_L1, {} },
                { 5, QTime(15, 0), 60, "Week review and planning"_L1, "focus"_L1, {}, {} },
            } },
        { "p-tomas"_L1,
            {
                { 1, QTime(9, 0), 30, "Team stand-up"_L1, "meeting"_L1, "Studio"_L1, {} },
                { 1, QTime(10, 30), 60, "Lead calls"_L1, "call"_L1, {}, {} },
                { 2, QTime(13, 30), 45, "Tidewater Yoga onboarding"_L1, "meeting"_L1, "Video call"_L1,
                    "c-tidewater"_L1 },
                { 3, QTime(16, 0), 30, "One-to-one with Maren"_L1, "meeting"_L1, "Studio"_L1, {} },
                { 4, QTime(9, 30), 120, "Pipeline clean-up"_L1, "focus"_L1, {}, {} },
                { 5, QTime(9, 0), 30, "Team stand-up"_L1, "meeting"_L1, "Studio"_L1, {} },
            } },
        { "p-priya"_L1,
            {
                { 1, QTime(9, 0), 30, "Team stand-up"_L1, "meeting"_L1, "Studio"_L1, {} },
                { 2, QTime(10, 0), 60, "Website review with Oakline Studio"_L1, "meeting"_L1, "Video call"_L1,
                    "c-oakline"_L1 },
                { 4, QTime(14, 0), 90, "Design sprint"_L1, "focus"_L1, {}, {} },
                { 5, QTime(9, 0), 30, "Team stand-up"_L1, "meeting"_L1, "Studio"_L1, {} },
            } },
    };
    return all;
}

qint64 at(const QDate &day, const QTime &time)
{
    return QDateTime(day, time).toMSecsSinceEpoch();
}

} // namespace

namespace ScheduleSeed {

void plant(ScheduleStore &schedule, const QDate &today)
{
    const QDate thisMonday = today.addDays(1 - today.dayOfWeek());
    for (int week = -2; week <= 4; ++week) {
        const QDate monday = thisMonday.addDays(7 * week);
        for (const Pattern &pattern : patterns()) {
            for (const Slot &slot : pattern.shape) {
                const QDate day = monday.addDays(slot.weekday - 1);
                const qint64 start = at(day, slot.start);
                schedule.addEvent({ .personId = pattern.personId,
                    .title = slot.title,
                    .startMs = start,
                    .endMs = start + qint64(slot.minutes) * 60'000,
                    .allDay = false,
                    .kind = slot.kind,
                    .location = slot.location,
                    .clientId = slot.clientId });
            }
        }
        // Payroll day every other Thursday, and a company day out once.
        if (week % 2 == 0) {
            const QDate thursday = monday.addDays(3);
            schedule.addEvent({ .personId = u"p-maren"_s,
                .title = u"Payroll run"_s,
                .startMs = at(thursday, QTime(0, 0)),
                .endMs = at(thursday.addDays(1), QTime(0, 0)),
                .allDay = true,
                .kind = u"focus"_s,
                .location = {},
                .clientId = {} });
        }
    }

    const QString intro = schedule.addLink(u"p-maren"_s, u"Intro call"_s, 30);
    const QString review = schedule.addLink(u"p-maren"_s, u"Project review"_s, 60);
    const QString demo = schedule.addLink(u"p-tomas"_s, u"Sales demo"_s, 45);
    // Clients book working days only, as the booking page offers them.
    const auto workingDaysAhead = [&today](int days) {
        QDate day = today;
        while (days > 0) {
            day = day.addDays(1);
            if (day.dayOfWeek() <= Qt::Friday)
                --days;
        }
        return day;
    };
    struct Booking {
        QString link;
        int inDays;
        QTime start;
        QLatin1StringView name;
        QLatin1StringView email;
        QLatin1StringView note;
    };
    const QList<Booking> bookings {
        { intro, 1, QTime(11, 0), "Lena Park"_L1, "lena@cedarlane.example"_L1,
            "We'd like reminders for our patients."_L1 },
        { intro, 3, QTime(15, 30), "Omar Haddad"_L1, "omar@fjordcoffee.example"_L1, {} },
        { intro, 8, QTime(10, 0), "Greta Voss"_L1, "greta@granitetile.example"_L1,
            "Quotes and invoices in one place?"_L1 },
        { review, 2, QTime(14, 0), "Nora Bright"_L1, "nora@brightwater.example"_L1, "Q4 numbers"_L1 },
        { review, 9, QTime(9, 30), "Ed Marlow"_L1, "ed@marlowandsons.example"_L1, {} },
        { demo, 1, QTime(16, 0), "Iris Salon"_L1, "hello@irissalon.example"_L1, {} },
        { demo, 4, QTime(11, 0), "Hazel Pediatrics"_L1, "office@hazelpeds.example"_L1, "Front desk inbox"_L1 },
    };
    for (const Booking &booking : bookings)
        schedule.addBooking(booking.link, booking.name, booking.email,
            at(workingDaysAhead(booking.inDays), booking.start), booking.note);
}

void plantGoogle(ScheduleGoogle &calendar, const QDate &today)
{
    const QString owner = u"p-maren"_s;
    calendar.grant(owner);
    struct Entry {
        int weekday;
        QTime start;
        int minutes;
        QLatin1StringView title;
        QLatin1StringView location;
    };
    const QList<Entry> week {
        { 1, QTime(7, 30), 45, "Gym"_L1, "Harbour Fitness"_L1 },
        { 2, QTime(12, 0), 60, "Lunch with Ingrid (accountant)"_L1, "Lindqvist Kitchen"_L1 },
        { 3, QTime(18, 30), 90, "Chamber of commerce mixer"_L1, "Old Customs House"_L1 },
        { 4, QTime(8, 0), 30, "School run"_L1, {} },
        { 5, QTime(17, 30), 120, "Dinner with the Reyes family"_L1, "Nordlys"_L1 },
    };
    const QDate thisMonday = today.addDays(1 - today.dayOfWeek());
    for (int weekIndex = -5; weekIndex <= 6; ++weekIndex) {
        const QDate monday = thisMonday.addDays(7 * weekIndex);
        for (const Entry &entry : week) {
            // Every other week for the evenings out.
            if (entry.weekday >= 3 && (weekIndex + entry.weekday) % 2 != 0)
                continue;
            const qint64 start = at(monday.addDays(entry.weekday - 1), entry.start);
            calendar.add(owner, entry.title, start, start + qint64(entry.minutes) * 60'000, false, entry.location);
        }
    }
    const QDate trip = thisMonday.addDays(14 + 3);
    calendar.add(
        owner, u"Trade fair in Lisbon"_s, at(trip, QTime(0, 0)), at(trip.addDays(2), QTime(0, 0)), true, u"Lisbon"_s);
}

} // namespace ScheduleSeed
