#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/workplan/NativeWorkPlanView.h"
#include "screens/workplan/WorkPlanRules.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;
const QString priya = u"priya@halvard.example"_s;

struct OpenRow {
    QString who;
    bool mayCoach;
    QString error;
};

} // namespace

Q_DECLARE_METATYPE(OpenRow)

// The work plan's state against the local workspace and its demo week.
class TestWorkPlanView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void opens_data();
    void opens();
    void weeksAndPeople();
    void completionShowsAtOnce();
    void staleEditShowsTheServiceVersion();
    void remindersAndNotes();

private:
    [[nodiscard]] std::unique_ptr<NativeWorkPlanView> opened(const QString &who);
    [[nodiscard]] static bool act(NativeWorkPlanView &view, const std::function<void()> &action);
    [[nodiscard]] static const WorkPlanRow *row(const NativeWorkPlanView &view, const QString &id);

    InboxTestClient client;
};

void TestWorkPlanView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeWorkPlanView> TestWorkPlanView::opened(const QString &who)
{
    TarnAPI &api = client.as(who);
    (void)tarnWaitFor(api.refreshSession());
    auto view = std::make_unique<NativeWorkPlanView>(api);
    QSignalSpy loaded(view.get(), &NativeWorkPlanView::refreshed);
    view->appear();
    if (!loaded.wait())
        return {};
    return view;
}

bool TestWorkPlanView::act(NativeWorkPlanView &view, const std::function<void()> &action)
{
    QSignalSpy done(&view, &NativeWorkPlanView::actionFinished);
    action();
    return !done.isEmpty() || done.wait();
}

const WorkPlanRow *TestWorkPlanView::row(const NativeWorkPlanView &view, const QString &id)
{
    for (const WorkPlanRow &row : view.entries()->rows())
        if (row.id == id)
            return &row;
    return nullptr;
}

void TestWorkPlanView::opens_data()
{
    QTest::addColumn<OpenRow>("row");
    QTest::addRow("owner") << OpenRow { maren, true, {} };
    QTest::addRow("manager") << OpenRow { tomas, true, {} };
    QTest::addRow("member") << OpenRow { priya, false, {} };
    // The shell hides the screen from them; the service refuses it too.
    QTest::addRow("no Sales") << OpenRow { u"jonah@halvard.example"_s, false, u"The work plan is not open to you."_s };
}

void TestWorkPlanView::opens()
{
    QFETCH(OpenRow, row);
    const std::unique_ptr<NativeWorkPlanView> view = opened(row.who);
    QVERIFY(view);
    QVERIFY(view->loaded());
    QVERIFY(view->thisWeek());
    QCOMPARE(view->errorText(), row.error);
    QCOMPARE(view->mayCoach(), row.mayCoach);
    QCOMPARE(view->people()->rowCount(), row.error.isEmpty() ? 6 : 0);
    QCOMPARE(view->entries()->rowCount() > 20, row.error.isEmpty());
}

void TestWorkPlanView::weeksAndPeople()
{
    const std::unique_ptr<NativeWorkPlanView> view = opened(maren);
    QVERIFY(view);
    const QString thisMonday = view->week();

    QSignalSpy loaded(view.get(), &NativeWorkPlanView::refreshed);
    view->previousWeek();
    QVERIFY(view->loading());
    QVERIFY(loaded.wait());
    QVERIFY(!view->thisWeek());
    QCOMPARE(view->week(), QDate::fromString(thisMonday, Qt::ISODate).addDays(-7).toString(Qt::ISODate));
    // Last week is behind us: most of it was done, not all.
    QVERIFY(view->done() > view->planned() / 2);
    QVERIFY(view->done() < view->planned());
    for (const WorkPlanRow &row : view->entries()->rows())
        QVERIFY(row.entry.day < thisMonday);

    view->setPerson(u"p-priya"_s);
    QCOMPARE(view->personName(), u"Priya Nair"_s);
    QCOMPARE(view->planned(), 5);
    QCOMPARE(view->coachNotes()->rowCount(), 1);
    view->showThisWeek();
    QVERIFY(loaded.wait());
    QVERIFY(view->thisWeek());
    for (const WorkPlanRow &row : view->entries()->rows())
        QCOMPARE(row.person_name, u"Priya Nair"_s);
    view->setPerson({});
    QVERIFY(view->planned() > 20);
    QCOMPARE(view->coachNotes()->rowCount(), 0);
}

void TestWorkPlanView::completionShowsAtOnce()
{
    const std::unique_ptr<NativeWorkPlanView> view = opened(priya);
    QVERIFY(view);
    const auto open = std::find_if(view->entries()->rows().begin(), view->entries()->rows().end(),
        [](const WorkPlanRow &row) { return row.entry.person_id == "p-priya"_L1 && !row.entry.done; });
    QVERIFY(open != view->entries()->rows().end());
    const QString id = open->id;
    const int doneBefore = view->done();
    QSignalSpy done(view.get(), &NativeWorkPlanView::actionFinished);
    view->complete(id, true);
    QVERIFY(row(*view, id)->entry.done);
    QCOMPARE(view->done(), doneBefore + 1);
    QVERIFY(done.wait());
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(row(*view, id)->entry.done_by_name, u"Priya Nair"_s);

    // Someone else's work: ticked at once, then the refusal and the service's state.
    const auto others = std::find_if(view->entries()->rows().begin(), view->entries()->rows().end(),
        [](const WorkPlanRow &row) { return row.entry.person_id == "p-tomas"_L1 && !row.entry.done; });
    QVERIFY(others != view->entries()->rows().end());
    const QString theirs = others->id;
    QVERIFY(act(*view, [&] { view->complete(theirs, true); }));
    QCOMPARE(view->errorText(), u"Only an owner or a manager completes someone else's work."_s);
    QVERIFY(!row(*view, theirs)->entry.done);
}

void TestWorkPlanView::staleEditShowsTheServiceVersion()
{
    const std::unique_ptr<NativeWorkPlanView> owner = opened(maren);
    const std::unique_ptr<NativeWorkPlanView> manager = opened(tomas);
    QVERIFY(owner && manager);
    owner->setPerson(u"p-priya"_s);
    const auto task = std::find_if(owner->entries()->rows().begin(), owner->entries()->rows().end(),
        [](const WorkPlanRow &row) { return row.entry.kind == "admin"_L1; });
    QVERIFY(task != owner->entries()->rows().end());
    const WorkPlanRow before = *task;

    QVERIFY(act(*manager, [&] { manager->editAdminTask(before.id, u"Clean the lead list"_s, before.entry.day, {}); }));
    QCOMPARE(manager->errorText(), QString());

    QSignalSpy done(owner.get(), &NativeWorkPlanView::actionFinished);
    owner->editAdminTask(before.id, u"Grow the lead list"_s, before.entry.day, {});
    QCOMPARE(row(*owner, before.id)->entry.title, u"Grow the lead list"_s);
    QVERIFY(done.wait());
    QCOMPARE(owner->errorText(), u"Tomas Reyes changed this task in the meantime; it now shows their change."_s);
    QCOMPARE(row(*owner, before.id)->entry.title, u"Clean the lead list"_s);
}

void TestWorkPlanView::remindersAndNotes()
{
    const std::unique_ptr<NativeWorkPlanView> view = opened(maren);
    QVERIFY(view);
    view->setPerson(u"p-jonah"_s);
    const int planned = view->planned();
    const QString friday = view->days().at(4).toMap().value(u"day"_s).toString();

    // A time that is not one is refused before anything is sent.
    view->addReminder(u"Renew the domain"_s, friday, u"25:70"_s);
    QCOMPARE(view->errorText(), u"A time is written like 9:30 or 14:00."_s);
    QVERIFY(!view->busy());

    QVERIFY(act(*view, [&] { view->addReminder(u"Renew the domain"_s, friday, u"9:05"_s); }));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->planned(), planned + 1);
    const auto added = std::find_if(view->entries()->rows().begin(), view->entries()->rows().end(),
        [](const WorkPlanRow &row) { return row.entry.title == "Renew the domain"_L1; });
    QVERIFY(added != view->entries()->rows().end());
    QCOMPARE(added->entry.time, u"09:05"_s);
    QCOMPARE(added->entry.person_id, u"p-jonah"_s);

    QVERIFY(act(*view, [&] { view->addAdminTask(u"Order a new laptop"_s, friday, u"For the new hire"_s); }));
    QCOMPARE(view->planned(), planned + 2);

    QVERIFY(act(*view, [&] { view->addCoachNote(u"Thanks for covering the migration."_s); }));
    QCOMPARE(view->coachNotes()->rows().back().body, u"Thanks for covering the migration."_s);
    QCOMPARE(view->coachNotes()->rows().back().author_name, u"Maren Holt"_s);
}

QTEST_GUILESS_MAIN(TestWorkPlanView)
#include "tst_workplanview.moc"
