#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/workplan/TarnWorkPlanCalls.h"
#include "screens/workplan/WorkPlanRules.h"
#include "support/FailureOf.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;
const QString priya = u"priya@halvard.example"_s;
const QString ada = u"ada@halvard.example"_s;
const QString jonah = u"jonah@halvard.example"_s;

enum class Call { Read, Complete, AdminTask, EditAdminTask, Reminder, CoachNote };

struct AccessRow {
    QString who;
    Call call;
    QString person; // whose entry, or for whom
    QString refusal; // empty: allowed
};

struct NotesRow {
    QString who;
    bool seesPriyasNotes;
    bool mayCoach;
};

} // namespace

Q_DECLARE_METATYPE(AccessRow)
Q_DECLARE_METATYPE(NotesRow)

// The work plan's endpoints against the local workspace and its demo week.
class TestWorkPlanCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void access_data();
    void access();
    void coachNotesReachTheirReaders_data();
    void coachNotesReachTheirReaders();
    void refusedInput();
    void staleAdminTaskEditIsRefused();
    void completionKeepsItsFirstTime();

private:
    [[nodiscard]] TarnWorkPlan plan(const QString &who);
    // The first entry of `person` this week of `kind` (any when empty).
    [[nodiscard]] TarnWorkEntry entryOf(const QString &person, const QString &kind = {});

    InboxTestClient client;
    QString week = WorkPlanRules::weekOf(QDate::currentDate()).toString(Qt::ISODate);
};

void TestWorkPlanCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

TarnWorkPlan TestWorkPlanCalls::plan(const QString &who)
{
    return tarnWaitFor(TarnWorkPlanCalls::workPlan(client.as(who), week));
}

TarnWorkEntry TestWorkPlanCalls::entryOf(const QString &person, const QString &kind)
{
    for (const TarnWorkPlanPerson &who : plan(maren).people)
        for (const TarnWorkEntry &entry : who.entries)
            if (who.id == person && (kind.isEmpty() || entry.kind == kind))
                return entry;
    return {};
}

void TestWorkPlanCalls::access_data()
{
    const QString closed = u"The work plan is not open to you."_s;
    const QString others = u"Only an owner or a manager plans work for someone else."_s;
    QTest::addColumn<AccessRow>("row");
    QTest::addRow("Sales reads the plan") << AccessRow { priya, Call::Read, {}, {} };
    QTest::addRow("no Sales, no plan") << AccessRow { jonah, Call::Read, {}, closed };
    QTest::addRow("no Sales, no completing") << AccessRow { jonah, Call::Complete, u"p-jonah"_s, closed };
    QTest::addRow("member completes her own") << AccessRow { priya, Call::Complete, u"p-priya"_s, {} };
    QTest::addRow("member completes no one else's") << AccessRow { priya, Call::Complete, u"p-tomas"_s,
        u"Only an owner or a manager completes someone else's work."_s };
    QTest::addRow("manager completes anyone's") << AccessRow { tomas, Call::Complete, u"p-ada"_s, {} };
    QTest::addRow("member plans for herself") << AccessRow { ada, Call::AdminTask, u"p-ada"_s, {} };
    QTest::addRow("member plans for no one else") << AccessRow { ada, Call::AdminTask, u"p-priya"_s, others };
    QTest::addRow("member reminds no one else") << AccessRow { priya, Call::Reminder, u"p-tomas"_s, others };
    QTest::addRow("owner reminds anyone") << AccessRow { maren, Call::Reminder, u"p-jonah"_s, {} };
    QTest::addRow("member edits no one else's task") << AccessRow { ada, Call::EditAdminTask, u"p-maren"_s,
        u"Only an owner or a manager changes someone else's task."_s };
    QTest::addRow("manager edits anyone's task") << AccessRow { tomas, Call::EditAdminTask, u"p-priya"_s, {} };
    QTest::addRow("member coaches no one")
        << AccessRow { priya, Call::CoachNote, u"p-ada"_s, u"Only an owner or a manager adds coaching notes."_s };
    QTest::addRow("manager coaches") << AccessRow { tomas, Call::CoachNote, u"p-priya"_s, {} };
}

void TestWorkPlanCalls::access()
{
    QFETCH(AccessRow, row);
    TarnAPI &api = client.as(row.who);
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    QString failure;
    switch (row.call) {
    case Call::Read:
        failure = failureOf(TarnWorkPlanCalls::workPlan(api, week));
        break;
    case Call::Complete:
        failure = failureOf(TarnWorkPlanCalls::completeWorkEntry(api, entryOf(row.person).id, { true }));
        break;
    case Call::AdminTask:
        failure = failureOf(TarnWorkPlanCalls::createAdminTask(api, { row.person, u"File receipts"_s, today, {} }));
        break;
    case Call::EditAdminTask: {
        const TarnWorkEntry task = entryOf(row.person, u"admin"_s);
        failure = failureOf(
            TarnWorkPlanCalls::updateAdminTask(api, task.id, { task.title, task.day, u"Moved"_s, task.version }));
        break;
    }
    case Call::Reminder:
        failure = failureOf(TarnWorkPlanCalls::createReminder(api, { row.person, u"Call back"_s, today, {} }));
        break;
    case Call::CoachNote:
        failure = failureOf(TarnWorkPlanCalls::addCoachNote(api, row.person, { week, u"Well done."_s }));
        break;
    }
    QCOMPARE(failure, row.refusal);
}

void TestWorkPlanCalls::coachNotesReachTheirReaders_data()
{
    QTest::addColumn<NotesRow>("row");
    QTest::addRow("owner") << NotesRow { maren, true, true };
    QTest::addRow("manager") << NotesRow { tomas, true, true };
    QTest::addRow("the person herself") << NotesRow { priya, true, false };
    QTest::addRow("a colleague") << NotesRow { ada, false, false };
}

void TestWorkPlanCalls::coachNotesReachTheirReaders()
{
    QFETCH(NotesRow, row);
    const TarnWorkPlan shown = plan(row.who);
    QCOMPARE(shown.week, week);
    QCOMPARE(shown.may_coach, row.mayCoach);
    // Everyone in the team's order, whatever their apps.
    QCOMPARE(shown.people.size(), 6);
    QCOMPARE(shown.people.front().id, u"p-maren"_s);
    const auto priyas = std::find_if(
        shown.people.begin(), shown.people.end(), [](const TarnWorkPlanPerson &who) { return who.id == "p-priya"_L1; });
    QVERIFY(priyas != shown.people.end());
    QVERIFY(!priyas->entries.isEmpty());
    QCOMPARE(!priyas->coach_notes.isEmpty(), row.seesPriyasNotes);
}

void TestWorkPlanCalls::refusedInput()
{
    TarnAPI &api = client.as(maren);
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    const QString tuesday = QDate::fromString(week, Qt::ISODate).addDays(1).toString(Qt::ISODate);
    const QString notMonday = u"A week is given by its Monday, YYYY-MM-DD."_s;
    QCOMPARE(failureOf(TarnWorkPlanCalls::workPlan(api, tuesday)), notMonday);
    QCOMPARE(failureOf(TarnWorkPlanCalls::addCoachNote(api, u"p-priya"_s, { tuesday, u"Hi"_s })), notMonday);
    QCOMPARE(
        failureOf(TarnWorkPlanCalls::addCoachNote(api, u"p-priya"_s, { week, u"  "_s })), u"A note cannot be empty."_s);
    QCOMPARE(failureOf(TarnWorkPlanCalls::createAdminTask(api, { u"p-maren"_s, u"  "_s, today, {} })),
        u"A title cannot be empty."_s);
    QCOMPARE(failureOf(TarnWorkPlanCalls::createAdminTask(api, { u"p-maren"_s, u"Taxes"_s, u"31/12/2026"_s, {} })),
        u"A day is written YYYY-MM-DD."_s);
    QCOMPARE(failureOf(TarnWorkPlanCalls::createAdminTask(api, { u"p-nobody"_s, u"Taxes"_s, today, {} })),
        u"No such person."_s);
    QCOMPARE(failureOf(TarnWorkPlanCalls::createReminder(api, { u"p-maren"_s, u"Call"_s, today, u"25:00"_s })),
        u"A time is written HH:mm."_s);
    QCOMPARE(failureOf(TarnWorkPlanCalls::updateAdminTask(
                 api, entryOf(u"p-tomas"_s, u"call"_s).id, { u"Call"_s, today, {}, 1 })),
        u"No such admin task."_s);
}

void TestWorkPlanCalls::staleAdminTaskEditIsRefused()
{
    TarnAPI &api = client.as(priya);
    const QString monday = week;
    const TarnCreatedID made
        = tarnWaitFor(TarnWorkPlanCalls::createAdminTask(api, { u"p-priya"_s, u" Order  paper "_s, monday, {} }));
    const TarnWorkEntry first = tarnWaitFor(
        TarnWorkPlanCalls::updateAdminTask(api, made.id, { u"Order printer paper"_s, monday, u"Two boxes"_s, 1 }));
    QCOMPARE(first.title, u"Order printer paper"_s);
    QCOMPARE(first.notes, u"Two boxes"_s);
    QCOMPARE(first.version, 2);
    // Someone still looking at the first version is refused, and told by whom.
    QCOMPARE(
        failureOf(TarnWorkPlanCalls::updateAdminTask(client.as(maren), made.id, { u"Order paper"_s, monday, {}, 1 })),
        u"Priya Nair changed this task in the meantime; it now shows their change."_s);
}

void TestWorkPlanCalls::completionKeepsItsFirstTime()
{
    TarnAPI &api = client.as(tomas);
    const TarnCreatedID made = tarnWaitFor(
        TarnWorkPlanCalls::createReminder(api, { u"p-tomas"_s, u"Water the plants"_s, week, u"08:15"_s }));
    const TarnWorkEntry done = tarnWaitFor(TarnWorkPlanCalls::completeWorkEntry(api, made.id, { true }));
    QVERIFY(done.done);
    QCOMPARE(done.time, u"08:15"_s);
    QCOMPARE(done.done_by_name, u"Tomas Reyes"_s);
    // The owner ticking it again changes nothing, not even who did it.
    QCOMPARE(tarnWaitFor(TarnWorkPlanCalls::completeWorkEntry(client.as(maren), made.id, { true })), done);
    const TarnWorkEntry undone = tarnWaitFor(TarnWorkPlanCalls::completeWorkEntry(api, made.id, { false }));
    QVERIFY(!undone.done);
    QCOMPARE(undone.done_by_name, std::nullopt);
    QCOMPARE(undone.version, done.version + 1);
}

QTEST_GUILESS_MAIN(TestWorkPlanCalls)
#include "tst_workplancalls.moc"
