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

struct HREditRow {
    QString as;
    QString jobTitle;
    QString startedOn;
    bool stale;
    QString refusal; // empty: saved
};

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

// An operation on payroll as a row can name it.
using PayrollCall = std::function<QString(TarnAPI &)>;

struct PayrollAccessRow {
    QString as;
    PayrollCall call;
};

// A period long before the demo's shifts, which the test has to itself; it
// also lies before the first period, so periods count backwards too.
const QString quietPeriod = u"2025-06-09"_s;

QString lastWeek()
{
    return TimeClockRules::weekStart(QDate::currentDate().addDays(-7)).toString(Qt::ISODate);
}

QString hoursBack(int hours)
{
    return QDateTime::currentDateTimeUtc().addSecs(-hours * 3600LL).toString(Qt::ISODateWithMs);
}

} // namespace

Q_DECLARE_METATYPE(HREditRow)
Q_DECLARE_METATYPE(WeekAccessRow)
Q_DECLARE_METATYPE(EditRow)
Q_DECLARE_METATYPE(PayrollAccessRow)

// The time clock's endpoints against the local workspace and its demo shifts.
class TestPeopleCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void hrRecords_data();
    void hrRecords();
    void hrEdits_data();
    void hrEdits();
    void demoWeeks();
    void weekAccess_data();
    void weekAccess();
    void clockInAndOut();
    void repeatedClockInIsReplayed();
    void edits_data();
    void edits();
    void payrollDemo();
    void payrollOwnersOnly_data();
    void payrollOwnersOnly();
    void payrollPeriodLifecycle();

private:
    InboxTestClient client;
};

void TestPeopleCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestPeopleCalls::hrRecords_data()
{
    QTest::addColumn<QString>("as");
    QTest::addColumn<bool>("contacts");
    QTest::addRow("owner") << maren << true;
    QTest::addRow("member") << sam << false;
}

void TestPeopleCalls::hrRecords()
{
    QFETCH(QString, as);
    QFETCH(bool, contacts);
    const QList<TarnHRRecord> team = tarnWaitFor(TarnPeopleCalls::hrRecords(client.as(as)));
    QCOMPARE(team.size(), 6);
    for (const TarnHRRecord &record : team) {
        QCOMPARE(record.phone.has_value(), contacts);
        QCOMPARE(record.emergency_contact.has_value(), contacts);
        QVERIFY(QDate::fromString(record.started_on, Qt::ISODate).isValid());
    }
    QVERIFY(std::is_sorted(
        team.begin(), team.end(), [](const TarnHRRecord &a, const TarnHRRecord &b) { return a.name < b.name; }));
}

void TestPeopleCalls::hrEdits_data()
{
    QTest::addColumn<HREditRow>("row");
    QTest::addRow("owner changes") << HREditRow { maren, u"Lead designer"_s, u"2023-04-17"_s, false, {} };
    QTest::addRow("manager may not") << HREditRow { tomas, u"Lead designer"_s, u"2023-04-17"_s, false,
        u"Only an owner changes HR records."_s };
    QTest::addRow("no job title") << HREditRow { maren, u"  "_s, u"2023-04-17"_s, false, u"Give the job title."_s };
    QTest::addRow("not a day") << HREditRow { maren, u"Designer"_s, u"17/04/2023"_s, false,
        u"Type the start date as YYYY-MM-DD."_s };
    QTest::addRow("stale") << HREditRow { maren, u"Designer"_s, u"2023-04-17"_s, true,
        u"Maren Holt changed this record in the meantime; it now shows their change."_s };
}

void TestPeopleCalls::hrEdits()
{
    QFETCH(HREditRow, row);
    const auto sam = [this] {
        const QList<TarnHRRecord> team = tarnWaitFor(TarnPeopleCalls::hrRecords(client.as(maren)));
        return *std::find_if(team.begin(), team.end(), [](const TarnHRRecord &r) { return r.id == "p-sam"_L1; });
    };
    const TarnHRRecord before = sam();
    TarnHRRecordEdit edit { row.jobTitle, before.employment, row.startedOn, before.phone.value_or(QString()), {},
        before.version };
    if (row.stale) {
        TarnHRRecordEdit first = edit;
        first.job_title = u"Theirs"_s;
        (void)tarnWaitFor(TarnPeopleCalls::updateHRRecord(client.as(maren), before.id, first));
    }
    if (!row.refusal.isEmpty()) {
        QCOMPARE(failureOf(TarnPeopleCalls::updateHRRecord(client.as(row.as), before.id, edit)), row.refusal);
        return;
    }
    const TarnHRRecord after = tarnWaitFor(TarnPeopleCalls::updateHRRecord(client.as(row.as), before.id, edit));
    QCOMPARE(after.version, before.version + 1);
    QCOMPARE(after.job_title, row.jobTitle);
    QCOMPARE(after.emergency_contact, std::nullopt); // cleared
    QCOMPARE(sam(), after);
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
    }
}

void TestPeopleCalls::weekAccess_data()
{
    QTest::addColumn<WeekAccessRow>("row");
    QTest::addRow("own week") << WeekAccessRow { sam, {}, std::nullopt, {} };
    QTest::addRow("owner sees another") << WeekAccessRow { maren, {}, u"p-jonah"_s, {} };
    QTest::addRow("member sees another") << WeekAccessRow { sam, {}, u"p-jonah"_s,
        u"Only an owner sees another person's time clock."_s };
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

void TestPeopleCalls::payrollDemo()
{
    const TarnPayrollOverview now = tarnWaitFor(TarnPeopleCalls::payrollOverview(client.as(maren), std::nullopt));
    QCOMPARE(now.period.status, u"open"_s);
    QCOMPARE(now.periods.first(), now.period);
    QVERIFY(!now.notes.isEmpty());
    qint64 total = 0;
    for (const TarnPayrollLine &line : now.lines) {
        qint64 adjusted = 0;
        for (const TarnPayrollAdjustment &adjustment : line.adjustments)
            adjusted += adjustment.amount;
        QCOMPARE(line.total, line.regular_pay + adjusted);
        total += line.total;
    }
    QCOMPARE(now.total, total);
    const TarnPayrollOverview last
        = tarnWaitFor(TarnPeopleCalls::payrollOverview(client.as(maren), now.periods.at(1).start));
    QCOMPARE(last.period.status, u"paid"_s);
    QVERIFY(last.lines.size() >= 5);
    QVERIFY(last.total > 0);
    QCOMPARE(failureOf(TarnPeopleCalls::payrollOverview(client.as(maren), u"2026-11-24"_s)),
        u"A pay period is named by its first day, as YYYY-MM-DD."_s);
}

void TestPeopleCalls::payrollOwnersOnly_data()
{
    QTest::addColumn<PayrollAccessRow>("row");
    const PayrollCall overview = [](TarnAPI &api) { return failureOf(TarnPeopleCalls::payrollOverview(api, {})); };
    const PayrollCall approve = [](TarnAPI &api) {
        return failureOf(TarnPeopleCalls::payrollAction(api, quietPeriod, TarnPayrollAction { u"approve"_s }));
    };
    const PayrollCall notes = [](TarnAPI &api) {
        return failureOf(TarnPeopleCalls::savePayrollNotes(api, quietPeriod, TarnPayrollNotes { u"Mine"_s, 0 }));
    };
    const PayrollCall remove
        = [](TarnAPI &api) { return failureOf(TarnPeopleCalls::removePayrollAdjustment(api, u"adj-any"_s)); };
    const PayrollCall exported
        = [](TarnAPI &api) { return failureOf(TarnPeopleCalls::exportPayroll(api, quietPeriod)); };
    for (const QString &who : { tomas, sam }) {
        QTest::addRow("%s overview", qPrintable(who)) << PayrollAccessRow { who, overview };
        QTest::addRow("%s approve", qPrintable(who)) << PayrollAccessRow { who, approve };
        QTest::addRow("%s notes", qPrintable(who)) << PayrollAccessRow { who, notes };
        QTest::addRow("%s remove", qPrintable(who)) << PayrollAccessRow { who, remove };
        QTest::addRow("%s export", qPrintable(who)) << PayrollAccessRow { who, exported };
    }
}

void TestPeopleCalls::payrollOwnersOnly()
{
    QFETCH(PayrollAccessRow, row);
    QCOMPARE(row.call(client.as(row.as)), u"Payroll is open to owners only."_s);
}

void TestPeopleCalls::payrollPeriodLifecycle()
{
    TarnAPI &api = client.as(maren);
    QCOMPARE(failureOf(TarnPeopleCalls::exportPayroll(api, quietPeriod)),
        u"No one has hours or adjustments in this period."_s);
    const TarnPayrollAction bonus { u"adjust"_s, u"p-sam"_s, u"Bonus, spring"_s, 12345 };
    const TarnPayrollOverview adjusted = tarnWaitFor(TarnPeopleCalls::payrollAction(api, quietPeriod, bonus));
    QCOMPARE(adjusted.lines.size(), 1);
    QCOMPARE(adjusted.lines.first().adjustments.first().created_by_name, u"Maren Holt"_s);
    QCOMPARE(tarnWaitFor(TarnPeopleCalls::exportPayroll(api, quietPeriod)),
        QByteArray("Period,Person,Hours,Rate,Regular pay,Adjustments,Total\r\n"
                   "2025-06-09 to 2025-06-22,Sam Okoro,0.00,36.00,0.00,123.45,123.45\r\n"
                   "2025-06-09 to 2025-06-22,Total,,,,,123.45\r\n"));

    // Notes against the version they were read at; a stale one is refused.
    const TarnPayrollOverview noted = tarnWaitFor(
        TarnPeopleCalls::savePayrollNotes(api, quietPeriod, TarnPayrollNotes { u"Bonus agreed"_s, adjusted.version }));
    QCOMPARE(noted.notes, u"Bonus agreed"_s);
    QCOMPARE(failureOf(
                 TarnPeopleCalls::savePayrollNotes(api, quietPeriod, TarnPayrollNotes { u"Late"_s, adjusted.version })),
        u"Maren Holt changed this period in the meantime; it now shows their change."_s);

    // Approved, it takes no adjustments until reopened; paid, it is final.
    const QString adjustment = adjusted.lines.first().adjustments.first().id;
    const TarnPayrollAction approve { u"approve"_s };
    QCOMPARE(tarnWaitFor(TarnPeopleCalls::payrollAction(api, quietPeriod, approve)).period.status, u"approved"_s);
    QCOMPARE(failureOf(TarnPeopleCalls::payrollAction(api, quietPeriod, bonus)),
        u"A period that is approved cannot take \"adjust\"."_s);
    QCOMPARE(failureOf(TarnPeopleCalls::removePayrollAdjustment(api, adjustment)),
        u"Only an open period's adjustments can be removed."_s);
    const TarnPayrollAction reopen { u"reopen"_s };
    (void)tarnWaitFor(TarnPeopleCalls::payrollAction(api, quietPeriod, reopen));
    QVERIFY(tarnWaitFor(TarnPeopleCalls::removePayrollAdjustment(api, adjustment)).lines.isEmpty());
    (void)tarnWaitFor(TarnPeopleCalls::payrollAction(api, quietPeriod, approve));
    const TarnPayrollAction paid { u"mark-paid"_s };
    QCOMPARE(tarnWaitFor(TarnPeopleCalls::payrollAction(api, quietPeriod, paid)).period.status, u"paid"_s);
    QCOMPARE(failureOf(TarnPeopleCalls::payrollAction(api, quietPeriod, reopen)),
        u"A period that is paid cannot take \"reopen\"."_s);
}

QTEST_GUILESS_MAIN(TestPeopleCalls)
#include "tst_peoplecalls.moc"
