#include "screens/schedule/ScheduleRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct WeekRow {
    QByteArray zone;
    QDate monday;
    qint64 hours;
};

struct PlaceRow {
    QString start;
    QString end;
    bool allDay;
    QDate day;
    std::optional<ScheduleRules::Placement> expected;
};

TarnCalendarEvent timed(const QString &start, const QString &end, bool allDay = false)
{
    return { .id = u"e1"_s, .title = u"Review"_s, .start_at = start, .end_at = end, .all_day = allDay, .kind = {} };
}

struct MonthRow {
    QByteArray zone;
    QDate first;
    QDate gridStart;
    int daysInMonth;
    qint64 hours; // the grid's length
    QString eventStart; // an event of half an hour, counted on `eventDay` only
    QDate eventDay;
};

struct DraftRow {
    QString title;
    QString day;
    QString start;
    QString end;
    QString expected; // the UTC start, or the refusal
};

} // namespace

Q_DECLARE_METATYPE(DraftRow)
Q_DECLARE_METATYPE(WeekRow)
Q_DECLARE_METATYPE(MonthRow)
Q_DECLARE_METATYPE(PlaceRow)

// The calendar's week in a time zone: its length across clock changes and
// where events fall on its days by the wall clock.
class TestScheduleRules : public QObject {
    Q_OBJECT

private slots:
    void weeks_data();
    void weeks();
    void placements_data();
    void placements();
    void labels();
    void months_data();
    void months();
    void drafts_data();
    void drafts();
};

void TestScheduleRules::weeks_data()
{
    QTest::addColumn<WeekRow>("row");
    QTest::addRow("ordinary week") << WeekRow { "Europe/Berlin", QDate(2026, 11, 23), 168 };
    QTest::addRow("clocks go forward in spring") << WeekRow { "Europe/Berlin", QDate(2026, 3, 23), 167 };
    QTest::addRow("clocks go back in autumn") << WeekRow { "Europe/Berlin", QDate(2026, 10, 19), 169 };
    QTest::addRow("a change on another Sunday") << WeekRow { "America/New_York", QDate(2026, 3, 2), 167 };
}

void TestScheduleRules::weeks()
{
    QFETCH(WeekRow, row);
    const QTimeZone zone(row.zone);
    QVERIFY(zone.isValid());
    QCOMPARE(ScheduleRules::weekStart(row.monday.addDays(4)), row.monday);
    const auto [from, to] = ScheduleRules::weekRange(row.monday, zone);
    QCOMPARE(from.toTimeZone(zone).time(), QTime(0, 0));
    QCOMPARE(to.toTimeZone(zone).date(), row.monday.addDays(7));
    QCOMPARE(from.secsTo(to) / 3600, row.hours);
}

void TestScheduleRules::placements_data()
{
    using P = ScheduleRules::Placement;
    QTest::addColumn<PlaceRow>("row");
    // In New York, which moves from UTC-5 to UTC-4 at 02:00 on 8 March 2026.
    QTest::addRow("morning before the change")
        << PlaceRow { u"2026-03-07T14:00:00Z"_s, u"2026-03-07T15:00:00Z"_s, false, QDate(2026, 3, 7), P { 540, 600 } };
    QTest::addRow("the same wall time after it")
        << PlaceRow { u"2026-03-08T13:00:00Z"_s, u"2026-03-08T14:00:00Z"_s, false, QDate(2026, 3, 8), P { 540, 600 } };
    QTest::addRow("across the skipped hour")
        << PlaceRow { u"2026-03-08T06:30:00Z"_s, u"2026-03-08T07:30:00Z"_s, false, QDate(2026, 3, 8), P { 90, 210 } };
    QTest::addRow("late evening, first day") << PlaceRow { u"2026-03-11T03:00:00Z"_s, u"2026-03-11T05:00:00Z"_s, false,
        QDate(2026, 3, 10), P { 1380, 1440 } };
    QTest::addRow("late evening, second day")
        << PlaceRow { u"2026-03-11T03:00:00Z"_s, u"2026-03-11T05:00:00Z"_s, false, QDate(2026, 3, 11), P { 0, 60 } };
    QTest::addRow("ends as the day starts")
        << PlaceRow { u"2026-03-10T03:00:00Z"_s, u"2026-03-10T04:00:00Z"_s, false, QDate(2026, 3, 10), std::nullopt };
    QTest::addRow("all day, its day") << PlaceRow { u"2026-03-12T04:00:00Z"_s, u"2026-03-13T04:00:00Z"_s, true,
        QDate(2026, 3, 12), P { 0, 1440 } };
    QTest::addRow("all day, the day after")
        << PlaceRow { u"2026-03-12T04:00:00Z"_s, u"2026-03-13T04:00:00Z"_s, true, QDate(2026, 3, 13), std::nullopt };
    QTest::addRow("unreadable") << PlaceRow { u"soon"_s, u"later"_s, false, QDate(2026, 3, 12), std::nullopt };
}

void TestScheduleRules::placements()
{
    QFETCH(PlaceRow, row);
    const QTimeZone zone("America/New_York");
    const std::optional<ScheduleRules::Placement> placed
        = ScheduleRules::placeOn(timed(row.start, row.end, row.allDay), row.day, zone);
    QCOMPARE(placed.has_value(), row.expected.has_value());
    if (placed) {
        QCOMPARE(placed->start, row.expected->start);
        QCOMPARE(placed->end, row.expected->end);
    }
}

void TestScheduleRules::labels()
{
    QCOMPARE(ScheduleRules::weekLabel(QDate(2026, 11, 23)), u"23 – 29 November 2026"_s);
    QCOMPARE(ScheduleRules::weekLabel(QDate(2026, 11, 30)), u"30 November – 6 December 2026"_s);
    QCOMPARE(ScheduleRules::weekLabel(QDate(2026, 12, 28)), u"28 December 2026 – 3 January 2027"_s);

    // The week's days carry each event once per day it touches, all-day first.
    const QTimeZone zone("America/New_York");
    const QList<ScheduleDay> week = ScheduleRules::days(QDate(2026, 3, 9),
        { timed(u"2026-03-11T03:00:00Z"_s, u"2026-03-11T05:00:00Z"_s),
            timed(u"2026-03-10T04:00:00Z"_s, u"2026-03-11T04:00:00Z"_s, true) },
        zone, QDate(2026, 3, 10));
    QCOMPARE(week.size(), 7);
    QCOMPARE(week.at(1).label, u"Tue 10"_s);
    QVERIFY(week.at(1).today);
    QCOMPARE(week.at(1).events.size(), 2);
    QCOMPARE(week.at(1).events.at(0).toMap().value(u"time"_s), u"All day"_s);
    QCOMPARE(week.at(1).events.at(1).toMap().value(u"time"_s), u"23:00 – 01:00"_s);
    QCOMPARE(week.at(2).events.size(), 1);
    QCOMPARE(week.at(3).events.size(), 0);
}

void TestScheduleRules::months_data()
{
    QTest::addColumn<MonthRow>("row");
    QTest::addRow("New York, clocks go back in the grid's first week") << MonthRow { "America/New_York",
        QDate(2026, 11, 1), QDate(2026, 10, 26), 30, 1009, u"2026-11-30T23:30:00Z"_s, QDate(2026, 11, 30) };
    QTest::addRow("New York, clocks go forward") << MonthRow { "America/New_York", QDate(2026, 3, 1),
        QDate(2026, 2, 23), 31, 1007, u"2026-03-09T04:30:00Z"_s, QDate(2026, 3, 9) };
    QTest::addRow("Berlin, clocks go back") << MonthRow { "Europe/Berlin", QDate(2026, 10, 1), QDate(2026, 9, 28), 31,
        1009, u"2026-10-25T22:30:00Z"_s, QDate(2026, 10, 25) };
    QTest::addRow("Berlin, a leap February") << MonthRow { "Europe/Berlin", QDate(2028, 2, 1), QDate(2028, 1, 31), 29,
        1008, u"2028-02-29T22:30:00Z"_s, QDate(2028, 2, 29) };
}

void TestScheduleRules::months()
{
    QFETCH(MonthRow, row);
    const QTimeZone zone(row.zone);
    QCOMPARE(ScheduleRules::monthStart(row.first.addDays(row.daysInMonth - 1)), row.first);
    const auto [from, to] = ScheduleRules::monthRange(row.first, zone);
    QCOMPARE(from, row.gridStart.startOfDay(zone));
    QCOMPARE(to.toTimeZone(zone).date(), row.gridStart.addDays(42));
    QCOMPARE(to.toTimeZone(zone).time(), QTime(0, 0));
    QCOMPARE(from.secsTo(to) / 3600, row.hours);

    const QDateTime start = QDateTime::fromString(row.eventStart, Qt::ISODate);
    const TarnCalendarEvent event = timed(row.eventStart, start.addSecs(1800).toString(Qt::ISODate));
    const QDate today = row.first.addDays(3);
    const QList<ScheduleMonthDay> grid
        = ScheduleRules::monthDays(row.first, { event, event, event, event }, zone, today);
    QCOMPARE(grid.size(), 42);
    QCOMPARE(grid.constFirst().date, row.gridStart.toString(Qt::ISODate));
    QCOMPARE(grid.constFirst().weekday, u"Mon"_s);
    QCOMPARE(
        std::count_if(grid.begin(), grid.end(), [](const ScheduleMonthDay &d) { return d.inMonth; }), row.daysInMonth);
    for (qsizetype i = 0; i < grid.size(); ++i) {
        const QDate day = row.gridStart.addDays(i);
        QCOMPARE(grid.at(i).number, day.day());
        QCOMPARE(grid.at(i).today, day == today);
        QCOMPARE(grid.at(i).count, day == row.eventDay ? 4 : 0);
        QCOMPARE(grid.at(i).titles.size(), day == row.eventDay ? ScheduleRules::monthTitles : 0);
    }
    QCOMPARE(ScheduleRules::monthLabel(row.first), QLocale(QLocale::English).toString(row.first, u"MMMM yyyy"_s));
}

void TestScheduleRules::drafts_data()
{
    QTest::addColumn<DraftRow>("row");
    // In Berlin, where 02:00 to 03:00 is skipped on 29 March 2026.
    QTest::addRow("winter time") << DraftRow { u" Dentist "_s, u"2026-03-27"_s, u"9:00"_s, u"09:30"_s,
        u"2026-03-27T08:00:00Z"_s };
    QTest::addRow("summer time") << DraftRow { u"Dentist"_s, u"2026-03-30"_s, u"09:00"_s, u"09:30"_s,
        u"2026-03-30T07:00:00Z"_s };
    QTest::addRow("in the skipped hour") << DraftRow { u"Night shift"_s, u"2026-03-29"_s, u"02:30"_s, u"04:00"_s,
        u"The clocks change then: that time does not exist on that day."_s };
    QTest::addRow("ends first") << DraftRow { u"Dentist"_s, u"2026-03-30"_s, u"10:00"_s, u"09:00"_s,
        u"The event ends after it starts, on the same day."_s };
    QTest::addRow("day unreadable") << DraftRow { u"Dentist"_s, u"30/03/2026"_s, u"09:00"_s, u"10:00"_s,
        u"Write the day as 2026-11-30."_s };
    QTest::addRow("time unreadable") << DraftRow { u"Dentist"_s, u"2026-03-30"_s, u"9am"_s, u"10:00"_s,
        u"Write the times as 09:30, on a 24-hour clock."_s };
    QTest::addRow("no title") << DraftRow { u"  "_s, u"2026-03-30"_s, u"09:00"_s, u"10:00"_s,
        u"Give the event a title of up to 100 characters."_s };
}

void TestScheduleRules::drafts()
{
    QFETCH(DraftRow, row);
    const auto draft
        = ScheduleRules::eventDraft(row.title, row.day, row.start, row.end, u"Surgery"_s, QTimeZone("Europe/Berlin"));
    if (const QString *refusal = std::get_if<QString>(&draft)) {
        QCOMPARE(*refusal, row.expected);
        return;
    }
    const TarnCalendarEventDraft made = std::get<TarnCalendarEventDraft>(draft);
    QCOMPARE(made.start_at, row.expected);
    QCOMPARE(made.title, row.title.simplified());
    QVERIFY(made.end_at > made.start_at);
}

QTEST_GUILESS_MAIN(TestScheduleRules)
#include "tst_schedulerules.moc"
