#include "inbox/InboxTestClient.h"
#include "screens/support/NativeSupportView.h"
#include "screens/support/SupportBoardRules.h"
#include "screens/support/TarnSupportCalls.h"
#include "support/FailureOf.h"

#include <QAbstractItemModelTester>
#include <QJsonArray>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;
const QString priya = u"priya@halvard.example"_s;
const QString jonah = u"jonah@halvard.example"_s;

template <typename Object, typename Signal, typename Trigger>
bool settle(Object &object, Signal signal, Trigger trigger)
{
    QSignalSpy spy(&object, signal);
    trigger();
    return spy.wait(15'000);
}

QStringList titles(const NativeSupportCardModel &model)
{
    QStringList out;
    for (const SupportCard &card : model.rows())
        out.append(card.task.title);
    return out;
}

QString idOf(const NativeSupportView &view, const QString &title)
{
    for (const TarnSupportTaskSummary &task : view.board().tasks)
        if (task.title == title)
            return task.id;
    return {};
}

int postsTo(TestWorkspace &workspace, const QString &ending)
{
    int count = 0;
    for (const QJsonValue &request : workspace.requests()) {
        const QJsonObject r = request.toObject();
        count += r.value("method"_L1) == "POST"_L1 && r.value("path"_L1).toString().endsWith(ending);
    }
    return count;
}

} // namespace

// The support screen's state over a real workspace, without a window.
class TestSupportView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void theBoardOpensAsItWasLeft();
    void typingFiltersRowByRow();
    void aSavedViewHoldsTheFilters();
    void aConcurrentMoveIsRefusedWithTheCurrentState();
    void aTimerKeepsRunningForANewView();
    void theTaskDetail();
    void recurringWorkAndTheClientsPage();
    void aStaleEditShowsTheTaskAsItIsNow();
    void theByClientViewGroupsByCustomer();
    void signingOutForgetsTheBoardNotThePreferences();
    void aNewTaskOpensWithTheCustomerFiltered();
    void movingByKeyboardStopsAtTheEdges_data();
    void movingByKeyboardStopsAtTheEdges();
    void theTimerCountsFromTheServicesStart();
    void aRenamedViewIsRenamedInThePicker();

private:
    // A loaded view for `email` with preferences in `file`.
    [[nodiscard]] std::unique_ptr<NativeSupportView> loaded(const QString &email, QSettings &preferences);

    InboxTestClient client;
    QTemporaryDir folder;
};

void TestSupportView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeSupportView> TestSupportView::loaded(const QString &email, QSettings &preferences)
{
    auto view = std::make_unique<NativeSupportView>(client.as(email), preferences);
    if (!settle(*view, &NativeSupportView::refreshed, [&] { view->refresh(); }))
        return nullptr;
    return view;
}

void TestSupportView::theBoardOpensAsItWasLeft()
{
    QSettings preferences(folder.filePath(u"left.ini"_s), QSettings::IniFormat);
    {
        const auto view = loaded(maren, preferences);
        QVERIFY(view);
        QCOMPARE(view->viewId(), u"all"_s);
        view->setViewId(u"week"_s);
        view->setDefaultViewId(u"mine"_s);
        view->setClientFilter(u"c-brightwater"_s);
        view->setHideDone(true);
        view->setSearchText(u"never kept"_s);
        view->setViewId(u"no-such-view"_s);
        QCOMPARE(view->viewId(), u"week"_s);
    }
    preferences.sync();

    // A new view object is the app started again.
    QSettings again(folder.filePath(u"left.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, again);
    QVERIFY(view);
    QCOMPARE(view->viewId(), u"week"_s);
    QCOMPARE(view->defaultViewId(), u"mine"_s);
    QCOMPARE(view->clientFilter(), u"c-brightwater"_s);
    QVERIFY(view->hideDone());
    QCOMPARE(view->searchText(), QString());
    // Brightwater's open work due by next week: the overdue portal and the
    // printer, the tablet, the backup check, the switch.
    QCOMPARE(view->done()->count(), 0);
    QCOMPARE(titles(*view->waiting()), QStringList { u"Patient portal login loops"_s });
    QCOMPARE(titles(*view->inProgress()), QStringList { u"Front desk printer drops off the network"_s });
    QCOMPARE(titles(*view->todo()),
        (QStringList {
            u"Reset the reception tablet"_s, u"Replace the X-ray room switch"_s, u"Monthly backup check"_s }));
}

void TestSupportView::typingFiltersRowByRow()
{
    QSettings preferences(folder.filePath(u"typing.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, preferences);
    QVERIFY(view);
    QAbstractItemModelTester tester(view->todo(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy resets(view->todo(), &QAbstractItemModel::modelReset);
    const int all = view->shownCount();
    view->setSearchText(u"ki"_s);
    const int narrowed = view->shownCount();
    QVERIFY(narrowed > 0 && narrowed < all);
    view->setSearchText(u"kiosk"_s);
    QCOMPARE(titles(*view->inProgress()), QStringList { u"Gym check-in kiosk freezes"_s });
    QCOMPARE(view->shownCount(), 1);
    view->setSearchText(QString());
    QCOMPARE(view->shownCount(), all);
    QCOMPARE(resets.size(), 0);
}

void TestSupportView::aSavedViewHoldsTheFilters()
{
    QSettings preferences(folder.filePath(u"saved.ini"_s), QSettings::IniFormat);
    const auto view = loaded(priya, preferences);
    QVERIFY(view);
    view->setPriorityFilter(u"urgent"_s);
    const QStringList urgent = titles(*view->todo()) + titles(*view->inProgress());
    QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->saveView(u"Fires"_s); }));
    QVERIFY(view->savedViewChosen());
    QCOMPARE(view->viewTitle(), u"Fires"_s);
    QCOMPARE(view->priorityFilter(), QString()); // the view holds it now
    QCOMPARE(titles(*view->todo()) + titles(*view->inProgress()), urgent);

    // The chosen view is the default one: deleting it falls back to "All tasks".
    view->setDefaultViewId(view->viewId());
    QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->deleteView(view->viewId()); }));
    QCOMPARE(view->viewId(), u"all"_s);
    QCOMPARE(preferences.value(NativeSupportView::viewKey).toString(), u"all"_s);
}

void TestSupportView::aConcurrentMoveIsRefusedWithTheCurrentState()
{
    QSettings mine(folder.filePath(u"move-mine.ini"_s), QSettings::IniFormat);
    QSettings theirs(folder.filePath(u"move-theirs.ini"_s), QSettings::IniFormat);
    const auto first = loaded(maren, mine);
    const auto second = loaded(tomas, theirs);
    QVERIFY(first && second);
    const QString card = idOf(*first, u"Renew the firewall licence"_s);
    QVERIFY(!card.isEmpty());

    QVERIFY(settle(*first, &NativeSupportView::actionFinished, [&] { first->moveCard(card, u"done"_s); }));
    QCOMPARE(first->errorText(), QString());
    QVERIFY(titles(*first->done()).contains(u"Renew the firewall licence"_s));

    // The second person still has the card in "To do" and moves it one column on.
    QVERIFY(titles(*second->todo()).contains(u"Renew the firewall licence"_s));
    QVERIFY(settle(*second, &NativeSupportView::actionFinished, [&] { second->moveCardBy(card, 1); }));
    QVERIFY2(second->errorText().contains(u"in the meantime: it is now in “Done”"_s), qPrintable(second->errorText()));
    QVERIFY(titles(*second->done()).contains(u"Renew the firewall licence"_s));
    QVERIFY(!titles(*second->inProgress()).contains(u"Renew the firewall licence"_s));
}

void TestSupportView::aTimerKeepsRunningForANewView()
{
    QSettings preferences(folder.filePath(u"timer.ini"_s), QSettings::IniFormat);
    QString card;
    {
        const auto view = loaded(priya, preferences);
        QVERIFY(view);
        QCOMPARE(view->timerTaskId(), QString());
        card = idOf(*view, u"Cafe menu screens"_s);
        QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->startTimer(card); }));
        QCOMPARE(view->timerTaskId(), card);
    }
    const auto view = loaded(priya, preferences);
    QVERIFY(view);
    QCOMPARE(view->timerTaskId(), card);
    QCOMPARE(view->timerTaskTitle(), u"Cafe menu screens"_s);
    QVERIFY(view->timerText().startsWith(u"0:00:"_s));
    const auto timing = std::find_if(view->todo()->rows().cbegin(), view->todo()->rows().cend(),
        [&card](const SupportCard &row) { return row.task.id == card; });
    QVERIFY(timing != view->todo()->rows().cend() && timing->timing);

    QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->stopTimer(); }));
    QCOMPARE(view->timerTaskId(), QString());
    QCOMPARE(view->timeEntries()->rows().first().task_id, card);
}

void TestSupportView::theTaskDetail()
{
    QSettings preferences(folder.filePath(u"detail.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, preferences);
    QVERIFY(view);
    NativeSupportTaskDetail &task = *view->task();
    const QString card = idOf(*view, u"Shared calendar for the editors"_s);
    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { view->openTask(card); }));
    QCOMPARE(task.client(), u"Oakline Studio"_s);

    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { task.addSubtask(u"Make the calendar"_s); }));
    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { task.addComment(u"Editors want colours."_s); }));
    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { task.logTime(25, u"Call"_s); }));
    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { task.edit(u"priority"_s, u"high"_s); }));
    QCOMPARE(task.subtasks()->count(), 1);
    const QString subtask = task.subtasks()->rows().first().task.id;
    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { task.setSubtaskDone(subtask, true); }));
    QCOMPARE(task.subtasks()->rows().first().task.status, u"done"_s);
    QCOMPARE(task.comments()->rows().last().body, u"Editors want colours."_s);
    QCOMPARE(task.logged(), u"25 min"_s);
    QCOMPARE(task.priority(), u"high"_s);
    QCOMPARE(task.errorText(), QString());
    // The board hears of the changes.
    QTRY_VERIFY(std::any_of(view->todo()->rows().cbegin(), view->todo()->rows().cend(), [&](const SupportCard &row) {
        return row.task.id == card && row.task.subtasks_done == 1 && row.task.priority == "high"_L1;
    }));

    // A file over the limit is refused before anything is sent, by name.
    QFile large(folder.filePath(u"big scan.pdf"_s));
    QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(SupportBoardRules::fileLimit + 1));
    large.close();
    client.workspace->clearRequests();
    task.attachFile(QUrl::fromLocalFile(large.fileName()));
    QCOMPARE(task.errorText(), u"“big scan.pdf” is larger than 5 MB, the most a task's file may be."_s);
    QCOMPARE(postsTo(*client.workspace, u"/files"_s), 0);

    QFile small(folder.filePath(u"notes.txt"_s));
    QVERIFY(small.open(QIODevice::WriteOnly) && small.write("colour codes\n") > 0);
    small.close();
    QVERIFY(settle(
        task, &NativeSupportTaskDetail::settled, [&] { task.attachFile(QUrl::fromLocalFile(small.fileName())); }));
    QCOMPARE(task.files()->rowCount(), 1);
    const QString saved = folder.filePath(u"saved.txt"_s);
    QVERIFY(settle(task, &NativeSupportTaskDetail::settled,
        [&] { task.downloadFile(task.files()->rows().first().id, QUrl::fromLocalFile(saved)); }));
    QFile back(saved);
    QVERIFY(back.open(QIODevice::ReadOnly));
    QCOMPARE(back.readAll(), QByteArray("colour codes\n"));
}

void TestSupportView::recurringWorkAndTheClientsPage()
{
    QSettings preferences(folder.filePath(u"recurring.ini"_s), QSettings::IniFormat);
    const auto view = loaded(tomas, preferences);
    QVERIFY(view);
    const qsizetype rules = view->recurring()->rowCount();
    const QString monday = QDate::currentDate().addDays(3).toString(Qt::ISODate);
    QVERIFY(settle(*view, &NativeSupportView::actionFinished,
        [&] { view->addRecurring(u"Check the UPS"_s, u"month"_s, monday, u"c-quill"_s, u"p-tomas"_s); }));
    QCOMPARE(view->recurring()->rowCount(), rules + 1);
    const auto rule = std::find_if(view->recurring()->rows().cbegin(), view->recurring()->rows().cend(),
        [](const TarnSupportRecurring &row) { return row.title == "Check the UPS"_L1; });
    QVERIFY(rule != view->recurring()->rows().cend() && rule->next_due == monday);
    QVERIFY(titles(*view->todo()).contains(u"Check the UPS"_s));
    const QString ruleId = rule->id;
    QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->stopRecurring(ruleId); }));
    QVERIFY(std::any_of(view->recurring()->rows().cbegin(), view->recurring()->rows().cend(),
        [&ruleId](const TarnSupportRecurring &row) { return row.id == ruleId && !row.active; }));

    QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->openClient(u"c-quill"_s); }));
    QCOMPARE(view->clientName(), u"Quill & Ink"_s);
    QVERIFY(titles(*view->clientTasks()).contains(u"Check the UPS"_s));
    QVERIFY(
        settle(*view, &NativeSupportView::clientChanged, [&] { view->addClientNote(u"Alarm code at the till"_s); }));
    QCOMPARE(view->clientNotes()->rows().last().body, u"Alarm code at the till"_s);
}

void TestSupportView::aStaleEditShowsTheTaskAsItIsNow()
{
    QSettings preferences(folder.filePath(u"stale.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, preferences);
    QVERIFY(view);
    NativeSupportTaskDetail &task = *view->task();
    const QString card = idOf(*view, u"Music system zones"_s);
    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { view->openTask(card); }));

    // Someone renames it while it is open here.
    TarnAPI &other = client.as(tomas);
    const qint64 version = tarnWaitFor(TarnSupportCalls::supportTask(other, card)).task.version;
    QCOMPARE(failureOf(TarnSupportCalls::updateSupportTask(
                 other, card, { .version = version, .title = u"Music system zones, all rooms"_s })),
        QString());

    QVERIFY(settle(task, &NativeSupportTaskDetail::settled, [&] { task.edit(u"priority"_s, u"urgent"_s); }));
    QVERIFY2(task.errorText().contains(u"in the meantime"_s), qPrintable(task.errorText()));
    QCOMPARE(task.title(), u"Music system zones, all rooms"_s);
    QCOMPARE(task.priority(), u"low"_s);
}

void TestSupportView::theByClientViewGroupsByCustomer()
{
    QSettings preferences(folder.filePath(u"byclient.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, preferences);
    QVERIFY(view);
    view->setViewId(u"client"_s);
    QStringList customers;
    for (const SupportCard &row : view->todo()->rows())
        customers.append(row.task.client_name.value_or(QString()));
    // Customers by name, the work of none last.
    QStringList sorted = customers.filter(QRegularExpression(u".+"_s));
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(customers.mid(0, sorted.size()), sorted);
    QVERIFY(customers.last().isEmpty());
}

void TestSupportView::signingOutForgetsTheBoardNotThePreferences()
{
    QSettings preferences(folder.filePath(u"signout.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, preferences);
    QVERIFY(view);
    view->setViewId(u"overdue"_s);
    QVERIFY(settle(
        *view->task(), &NativeSupportTaskDetail::settled, [&] { view->openTask(view->board().tasks.first().id); }));
    view->clear();
    QCOMPARE(view->shownCount(), 0);
    QCOMPARE(view->timerTaskId(), QString());
    QVERIFY(!view->task()->isOpen());
    QVERIFY(!view->loaded());
    QCOMPARE(view->viewId(), u"overdue"_s);
    QCOMPARE(preferences.value(NativeSupportView::viewKey).toString(), u"overdue"_s);
}

void TestSupportView::aNewTaskOpensWithTheCustomerFiltered()
{
    QSettings preferences(folder.filePath(u"new.ini"_s), QSettings::IniFormat);
    const auto view = loaded(jonah, preferences);
    QVERIFY(view);
    view->setClientFilter(u"c-tidewater"_s);
    QSignalSpy settled(view->task(), &NativeSupportTaskDetail::settled);
    QVERIFY(settle(*view, &NativeSupportView::actionFinished,
        [&] { view->createTask(u"Mirror in studio one"_s, u"high"_s, {}, u"p-jonah"_s, {}); }));
    QVERIFY(settled.count() > 0 || settled.wait(10'000));
    QCOMPARE(view->task()->title(), u"Mirror in studio one"_s);
    QCOMPARE(view->task()->client(), u"Tidewater Yoga"_s);
    QCOMPARE(view->task()->assignee(), u"Jonah Whitfield"_s);
    QVERIFY(titles(*view->todo()).contains(u"Mirror in studio one"_s));
}

void TestSupportView::movingByKeyboardStopsAtTheEdges_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("step");
    QTest::addColumn<QString>("status");
    QTest::addRow("back from the first column") << u"Label printer for the pharmacy"_s << -1 << u"todo"_s;
    QTest::addRow("on from the last column") << u"Set up the guest network"_s << 1 << u"done"_s;
    QTest::addRow("back one") << u"Vet clinic phones ring twice"_s << -1 << u"in_progress"_s;
}

void TestSupportView::movingByKeyboardStopsAtTheEdges()
{
    QFETCH(QString, title);
    QFETCH(int, step);
    QFETCH(QString, status);
    QSettings preferences(folder.filePath(u"edges.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, preferences);
    QVERIFY(view);
    const QString card = idOf(*view, title);
    // A move shows at once, so a card that stays put was never sent.
    const bool moves = status == u"in_progress"_s;
    if (moves)
        QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->moveCardBy(card, step); }));
    else
        view->moveCardBy(card, step);
    QVERIFY(std::any_of(view->board().tasks.cbegin(), view->board().tasks.cend(),
        [&](const TarnSupportTaskSummary &task) { return task.id == card && task.status == status; }));
}

void TestSupportView::theTimerCountsFromTheServicesStart()
{
    QSettings preferences(folder.filePath(u"clock.ini"_s), QSettings::IniFormat);
    // The demo's timer started 25 minutes before the demo was planted; this
    // view's clock runs an hour and a half ahead of that.
    QDateTime now = QDateTime::currentDateTime();
    NativeSupportView view(client.as(maren), preferences, [&now] { return now; });
    QVERIFY(settle(view, &NativeSupportView::refreshed, [&] { view.refresh(); }));
    QVERIFY(!view.timerTaskId().isEmpty());
    const QDateTime started = QDateTime::fromString(view.board().timer->started_at, Qt::ISODateWithMs);
    now = started.addSecs(90 * 60 + 7).toLocalTime();
    QCOMPARE(view.timerText(), u"1:30:07"_s);
}

void TestSupportView::aRenamedViewIsRenamedInThePicker()
{
    QSettings preferences(folder.filePath(u"rename.ini"_s), QSettings::IniFormat);
    const auto view = loaded(maren, preferences);
    QVERIFY(view);
    const auto saved = std::find_if(view->views()->rows().cbegin(), view->views()->rows().cend(),
        [](const SupportViewChoice &choice) { return !choice.builtIn; });
    QVERIFY(saved != view->views()->rows().cend());
    const QString id = saved->id;
    view->setViewId(id);
    QVERIFY(settle(*view, &NativeSupportView::actionFinished, [&] { view->renameView(id, u"On fire"_s); }));
    QCOMPARE(view->viewTitle(), u"On fire"_s);
    QCOMPARE(view->viewId(), id);
    // Built-in views keep their names.
    view->renameView(u"mine"_s, u"Ours"_s);
    QCOMPARE(view->views()->rows().at(1).title, u"Mine"_s);
}

QTEST_GUILESS_MAIN(TestSupportView)
#include "tst_supportview.moc"
