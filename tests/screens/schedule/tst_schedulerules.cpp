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

} // namespace

Q_DECLARE_METATYPE(WeekRow)
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

QTEST_GUILESS_MAIN(TestScheduleRules)
#include "tst_schedulerules.moc"
