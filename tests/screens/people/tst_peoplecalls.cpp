#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/people/TarnPeopleCalls.h"
#include "screens/people/TimeClockRules.h"
#include "support/FailureOf.h"

#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;
const QString sam = u"sam@halvard.example"_s;

struct WeekAccessRow {
    QString as;
    QString week; // empty: last week
    std::optional<QString> person;
    QString refusal; // empty: answered
};

struct EditRow {
    QString as;
    int inHoursBack;
    int outHoursBack; // 0: left open
    QString reason;
    qint64 versionOffset; // from the entry's version
    QString refusal; // empty: saved
};

QString lastWeek()
{
    return TimeClockRules::weekStart(QDate::currentDate().addDays(-7)).toString(Qt::ISODate);
}

QString hoursBack(int hours)
{
    return QDateTime::currentDateTimeUtc().addSecs(-hours * 3600LL).toString(Qt::ISODateWithMs);
}

} // namespace

Q_DECLARE_METATYPE(WeekAccessRow)
Q_DECLARE_METATYPE(EditRow)

// The time clock's endpoints against the local workspace and its demo shifts.
class TestPeopleCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void demoWeeks();
    void weekAccess_data();
    void weekAccess();
    void clockInAndOut();
    void repeatedClockInIsReplayed();
    void edits_data();
    void edits();

private:
    InboxTestClient client;
};

void TestPeopleCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestPeopleCalls::demoWeeks()
{
    for (const QString &person : { u"p-tomas"_s, u"p-priya"_s, u"p-jonah"_s, u"p-sam"_s }) {
        const TarnTimeClockWeek week = tarnWaitFor(TarnPeopleCalls::timeClock(client.as(maren), lastWeek(), person));
        QCOMPARE(week.person_id, person);
        QVERIFY2(week.entries.size() >= 5, qPrintable(person));
        const TimeClockRules::WeekHours hours = TimeClockRules::weekHours(week.entries,
            QDate::fromString(week.week, Qt::ISODate), QTimeZone::systemTimeZone(), QDateTime::currentDateTime());
        QVERIFY2(hours.totalSeconds > 30 * 3600 && hours.totalSeconds < 50 * 3600, qPrintable(person));
        for (qsizetype i = 1; i < week.entries.size(); ++i)
            QVERIFY(week.entries.at(i - 1).clock_in <= week.entries.at(i).clock_in);
    }
    const TarnTimeClockWeek priya = tarnWaitFor(TarnPeopleCalls::timeClock(
        client.as(maren), TimeClockRules::weekStart(QDate::currentDate()).toString(Qt::ISODate), u"p-priya"_s));
    QVERIFY(priya.clocked_in);
    QVERIFY(!priya.entries.constLast().clock_out);
}

void TestPeopleCalls::weekAccess_data()
{
    QTest::addColumn<WeekAccessRow>("row");
    QTest::addRow("own week") << WeekAccessRow { sam, {}, std::nullopt, {} };
    QTest::addRow("owner sees another") << WeekAccessRow { maren, {}, u"p-jonah"_s, {} };
    QTest::addRow("member sees another") << WeekAccessRow { sam, {}, u"p-jonah"_s,
        u"Only an owner sees another person's time clock."_s };
    QTest::addRow("manager sees another")
        << WeekAccessRow { tomas, {}, u"p-sam"_s, u"Only an owner sees another person's time clock."_s };
    QTest::addRow("not a Monday") << WeekAccessRow { sam, u"2026-11-24"_s, std::nullopt,
        u"A week is the date of its Monday, as YYYY-MM-DD."_s };
    QTest::addRow("no such person") << WeekAccessRow { maren, {}, u"p-nobody"_s, u"No such person."_s };
}

void TestPeopleCalls::weekAccess()
{
    QFETCH(WeekAccessRow, row);
    const QString week = row.week.isEmpty() ? lastWeek() : row.week;
    QCOMPARE(failureOf(TarnPeopleCalls::timeClock(client.as(row.as), week, row.person)), row.refusal);
}

void TestPeopleCalls::clockInAndOut()
{
    TarnAPI &api = client.as(sam);
    const TarnTimeEntry in = tarnWaitFor(TarnPeopleCalls::clockIn(api));
    QCOMPARE(in.person_id, u"p-sam"_s);
    QVERIFY(!in.clock_out);
    QCOMPARE(failureOf(TarnPeopleCalls::clockIn(api)), u"You are already clocked in."_s);
    const TarnTimeEntry out = tarnWaitFor(TarnPeopleCalls::clockOut(api));
    QCOMPARE(out.id, in.id);
    QVERIFY(out.clock_out && *out.clock_out >= in.clock_in);
    QCOMPARE(failureOf(TarnPeopleCalls::clockOut(api)), u"You are not clocked in."_s);
    const TarnTimeClockWeek week = tarnWaitFor(TarnPeopleCalls::timeClock(
        api, TimeClockRules::weekStart(QDate::currentDate()).toString(Qt::ISODate), std::nullopt));
    QVERIFY(!week.clocked_in);
    QCOMPARE(week.entries.constLast(), out);
}

void TestPeopleCalls::repeatedClockInIsReplayed()
{
    // A clock-in sent again after a lost answer, with its key, is the same clock-in.
    const QString token = client.workspace->signIn(u"ada@halvard.example"_s);
    const TestWorkspace::Headers headers {
        { "X-CSRF-Token", client.workspace->session(token).value("csrf"_L1).toString().toLatin1() },
        { "Idempotency-Key", "clock-in-once" }
    };
    const TestWorkspace::Answer first
        = client.workspace->send("POST", u"api/people/timeclock/in"_s, token, QJsonObject(), headers);
    const TestWorkspace::Answer again
        = client.workspace->send("POST", u"api/people/timeclock/in"_s, token, QJsonObject(), headers);
    QCOMPARE(first.status, 201);
    QCOMPARE(again.status, 201);
    QCOMPARE(again.json().value("id"_L1), first.json().value("id"_L1));
}

void TestPeopleCalls::edits_data()
{
    QTest::addColumn<EditRow>("row");
    const QString reason = u"Clocked out at the door, forgot the app"_s;
    QTest::addRow("owner corrects") << EditRow { maren, 30, 22, reason, 0, {} };
    QTest::addRow("owner reopens") << EditRow { maren, 3, 0, reason, 0, {} };
    QTest::addRow("manager may not") << EditRow { tomas, 30, 22, reason, 0,
        u"Only an owner corrects the time clock."_s };
    QTest::addRow("member may not") << EditRow { sam, 30, 22, reason, 0, u"Only an owner corrects the time clock."_s };
    QTest::addRow("no reason") << EditRow { maren, 30, 22, {}, 0, u"Say why the entry is being corrected."_s };
    QTest::addRow("backwards") << EditRow { maren, 22, 30, reason, 0, u"Clocking out comes after clocking in."_s };
    QTest::addRow("stale") << EditRow { maren, 30, 22, reason, -1,
        u"Maren Holt corrected this entry in the meantime; it now shows their correction."_s };
}

void TestPeopleCalls::edits()
{
    QFETCH(EditRow, row);
    // Tomas's oldest entry of last week: closed, and he is not clocked in.
    const TarnTimeClockWeek week = tarnWaitFor(TarnPeopleCalls::timeClock(client.as(maren), lastWeek(), u"p-tomas"_s));
    QVERIFY(!week.entries.isEmpty() && !week.clocked_in);
    const TarnTimeEntry before = week.entries.first();
    if (row.versionOffset < 0) {
        const TarnTimeEntryEdit first { before.clock_in, before.clock_out.value_or(QString()), u"Theirs"_s,
            before.version };
        (void)tarnWaitFor(TarnPeopleCalls::editTimeEntry(client.as(maren), before.id, first));
    }
    const TarnTimeEntryEdit edit { hoursBack(row.inHoursBack),
        row.outHoursBack ? hoursBack(row.outHoursBack) : QString(), row.reason, before.version };
    if (!row.refusal.isEmpty()) {
        QCOMPARE(failureOf(TarnPeopleCalls::editTimeEntry(client.as(row.as), before.id, edit)), row.refusal);
        return;
    }
    const TarnTimeEntry after = tarnWaitFor(TarnPeopleCalls::editTimeEntry(client.as(row.as), before.id, edit));
    QCOMPARE(after.version, before.version + 1);
    QCOMPARE(after.edit_reason, std::optional<QString>(row.reason));
    QCOMPARE(after.edited_by_name, std::optional<QString>(u"Maren Holt"_s));
    QCOMPARE(after.clock_out.has_value(), row.outHoursBack != 0);
    // Put back, closed, so every row starts from a closed entry of last week.
    const TarnTimeEntryEdit back { before.clock_in, before.clock_out.value_or(QString()), u"Put back"_s,
        after.version };
    (void)tarnWaitFor(TarnPeopleCalls::editTimeEntry(client.as(maren), before.id, back));
}

QTEST_GUILESS_MAIN(TestPeopleCalls)
#include "tst_peoplecalls.moc"
