#include "screens/people/TimeClockRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Times are UTC as the service sends them; an empty clock-out is still open.
struct Stretch {
    QString in;
    QString out;
};

struct WeekRow {
    QByteArray zone;
    QDate monday;
    QList<Stretch> stretches;
    QString now;
    QList<int> dayMinutes; // Monday first
    QString total;
};

struct EditRow {
    QString in;
    QString out;
    QString reason;
    QString problem; // empty: saved
};

QDateTime utc(const QString &iso)
{
    return QDateTime::fromString(iso, Qt::ISODate);
}

} // namespace

Q_DECLARE_METATYPE(WeekRow)
Q_DECLARE_METATYPE(EditRow)

// The week's hours cut at the zone's midnights and the week's ends, and the
// checks on an owner's correction.
class TestTimeClockRules : public QObject {
    Q_OBJECT

private slots:
    void weekHours_data();
    void weekHours();
    void editProblems_data();
    void editProblems();
};

void TestTimeClockRules::weekHours_data()
{
    QTest::addColumn<WeekRow>("row");
    const QDate nov23(2026, 11, 23);
    const QString late = u"2026-12-10T00:00:00Z"_s;
    QTest::addRow("a day shift") << WeekRow { "UTC", nov23,
        { { u"2026-11-23T09:00:00Z"_s, u"2026-11-23T17:30:00Z"_s } }, late, { 510, 0, 0, 0, 0, 0, 0 }, u"8:30"_s };
    QTest::addRow("across midnight") << WeekRow { "UTC", nov23,
        { { u"2026-11-24T22:00:00Z"_s, u"2026-11-25T02:15:00Z"_s } }, late, { 0, 120, 135, 0, 0, 0, 0 }, u"4:15"_s };
    QTest::addRow("begun the week before") << WeekRow { "UTC", nov23,
        { { u"2026-11-22T22:00:00Z"_s, u"2026-11-23T02:00:00Z"_s } }, late, { 120, 0, 0, 0, 0, 0, 0 }, u"2:00"_s };
    QTest::addRow("ending the week after") << WeekRow { "UTC", nov23,
        { { u"2026-11-29T21:00:00Z"_s, u"2026-11-30T03:00:00Z"_s } }, late, { 0, 0, 0, 0, 0, 0, 180 }, u"3:00"_s };
    QTest::addRow("open counts to now") << WeekRow { "UTC", nov23, { { u"2026-11-25T09:00:00Z"_s, {} } },
        u"2026-11-25T12:34:59Z"_s, { 0, 0, 214, 0, 0, 0, 0 }, u"3:34"_s };
    // 23:00-01:00 UTC on Monday night is 00:00-02:00 on Tuesday in Berlin.
    QTest::addRow("the zone's midnight") << WeekRow { "Europe/Berlin", nov23,
        { { u"2026-11-23T23:00:00Z"_s, u"2026-11-24T01:00:00Z"_s } }, late, { 0, 120, 0, 0, 0, 0, 0 }, u"2:00"_s };
    // Clocks go forward at 02:00 on Sunday 29 March: 22:00 to 06:00 is seven hours.
    QTest::addRow("across the clock change") << WeekRow { "Europe/Berlin", QDate(2026, 3, 23),
        { { u"2026-03-28T21:00:00Z"_s, u"2026-03-29T04:00:00Z"_s } }, late, { 0, 0, 0, 0, 0, 120, 300 }, u"7:00"_s };
}

void TestTimeClockRules::weekHours()
{
    QFETCH(WeekRow, row);
    QList<TarnTimeEntry> entries;
    for (const Stretch &stretch : row.stretches) {
        TarnTimeEntry entry;
        entry.clock_in = stretch.in;
        if (!stretch.out.isEmpty())
            entry.clock_out = stretch.out;
        entries.append(entry);
    }
    const TimeClockRules::WeekHours hours
        = TimeClockRules::weekHours(entries, row.monday, QTimeZone(row.zone), utc(row.now));
    for (int day = 0; day < 7; ++day)
        QCOMPARE(hours.daySeconds.at(day) / 60, row.dayMinutes.at(day));
    QCOMPARE(TimeClockRules::hoursText(hours.totalSeconds), row.total);
}

void TestTimeClockRules::editProblems_data()
{
    QTest::addColumn<EditRow>("row");
    const QString reason = u"Forgot to clock out"_s;
    QTest::addRow("a shift") << EditRow { u"2026-11-23T09:00:00Z"_s, u"2026-11-23T17:00:00Z"_s, reason, {} };
    QTest::addRow("left open") << EditRow { u"2026-11-23T09:00:00Z"_s, {}, reason, {} };
    QTest::addRow("no reason") << EditRow { u"2026-11-23T09:00:00Z"_s, u"2026-11-23T17:00:00Z"_s, u"  "_s,
        u"Say why the entry is being corrected."_s };
    QTest::addRow("out before in") << EditRow { u"2026-11-23T17:00:00Z"_s, u"2026-11-23T09:00:00Z"_s, reason,
        u"Clocking out comes after clocking in."_s };
    QTest::addRow("in the future") << EditRow { u"2026-11-23T09:00:00Z"_s, u"2026-11-25T13:00:00Z"_s, reason,
        u"An entry cannot reach into the future."_s };
    QTest::addRow("a forgotten clock-out") << EditRow { u"2026-11-23T09:00:00Z"_s, u"2026-11-24T09:00:00Z"_s, reason,
        u"An entry is at most 16 hours; split a longer one."_s };
    QTest::addRow("no clock-in") << EditRow { {}, u"2026-11-23T09:00:00Z"_s, reason,
        u"The clock-in time is not a time."_s };
}

void TestTimeClockRules::editProblems()
{
    QFETCH(EditRow, row);
    const QDateTime now = utc(u"2026-11-25T12:00:00Z"_s);
    QCOMPARE(TimeClockRules::editProblem(utc(row.in), utc(row.out), row.reason, now), row.problem);
}

QTEST_GUILESS_MAIN(TestTimeClockRules)
#include "tst_timeclockrules.moc"
