#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/support/SupportBoardRules.h"
#include "screens/support/TarnSupportCalls.h"
#include "service/TarnAPI.h"
#include "support/FailureOf.h"

#include <QDate>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Call = std::function<void(TarnAPI &)>;
using Refused = std::function<QString(TarnAPI &)>;

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

template <typename T> void attempt(QCoro::Task<T> task)
{
    (void)failureOf(std::move(task));
}

const QString oddId = u"t&=+#?/ é"_s;
const QString oddIdSent = u"t%26%3D%2B%23%3F%2F%20%C3%A9"_s;

TarnSupportTaskSummary cardNamed(const TarnSupportBoard &board, const QString &title)
{
    const auto found = std::find_if(board.tasks.cbegin(), board.tasks.cend(),
        [&title](const TarnSupportTaskSummary &task) { return task.title == title && task.status != "done"_L1; });
    return found == board.tasks.cend() ? TarnSupportTaskSummary {} : *found;
}

} // namespace

// The support calls against the local workspace and its demo board: the
// wire form, refusals, two people moving one card, recurring work completed
// twice at once, a timer across a restart of the service, files.
class TestSupportCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void wireForm_data();
    void wireForm();
    void refusals_data();
    void refusals();
    void theDemoBoard();
    void aStaleMoveIsRefusedWithTheCurrentState();
    void recurringWorkCompletedTwiceAtOnceMakesOneNextTask();
    void aTimerOutlivesARestartOfTheService();
    void filesUpAndDown();
    void viewsAndClientNotes();
    void aDataFolderWithoutABoardGetsTheDemoOne();
    void aCardCountsWhatHangsOffItsTask();

private:
    [[nodiscard]] QString newTask(const QString &title);

    InboxTestClient client;
};

void TestSupportCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

QString TestSupportCalls::newTask(const QString &title)
{
    return tarnWaitFor(TarnSupportCalls::createSupportTask(client.as(maren), TarnSupportTaskDraft { .title = title }))
        .id;
}

void TestSupportCalls::wireForm_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonObject>("body");

    using namespace TarnSupportCalls;
    const QString task = u"/api/support/tasks/"_s + oddIdSent;
    const struct {
        const char *label;
        Call call;
        QString method;
        QString path;
        QJsonObject body;
    } rows[] {
        { "task", [](TarnAPI &a) { attempt(supportTask(a, oddId)); }, u"GET"_s, task, {} },
        { "move sends only what changed, with the version",
            [](TarnAPI &a) {
                attempt(updateSupportTask(a, oddId, TarnSupportTaskUpdate { .version = 4, .status = u"done"_s }));
            },
            u"PATCH"_s, task, { { u"version"_s, 4 }, { u"status"_s, u"done"_s } } },
        { "clearing a due date sends it empty",
            [](TarnAPI &a) { attempt(updateSupportTask(a, oddId, { .version = 1, .due_date = QString() })); },
            u"PATCH"_s, task, { { u"version"_s, 1 }, { u"due_date"_s, QString() } } },
        { "subtask", [](TarnAPI &a) { attempt(createSupportSubtask(a, oddId, u"Step"_s)); }, u"POST"_s,
            task + u"/subtasks"_s, { { u"title"_s, u"Step"_s } } },
        { "timer", [](TarnAPI &a) { attempt(trackSupportTime(a, oddId, u"start"_s)); }, u"POST"_s, task + u"/timer"_s,
            { { u"action"_s, u"start"_s } } },
        { "download", [](TarnAPI &a) { attempt(downloadSupportFile(a, oddId)); }, u"GET"_s,
            u"/api/support/files/"_s + oddIdSent, {} },
        { "stop recurring", [](TarnAPI &a) { attempt(stopSupportRecurring(a, oddId)); }, u"POST"_s,
            u"/api/support/recurring/"_s + oddIdSent + u"/stop"_s, {} },
        { "client note", [](TarnAPI &a) { attempt(addSupportClientNote(a, oddId, u"Hi"_s)); }, u"POST"_s,
            u"/api/support/clients/"_s + oddIdSent + u"/notes"_s, { { u"body"_s, u"Hi"_s } } },
        { "saved view keeps only set filters",
            [](TarnAPI &a) {
                attempt(saveSupportView(
                    a, { .name = u"Mine"_s, .filters = { .assignee_id = u"p-1"_s, .text = QString() } }));
            },
            u"POST"_s, u"/api/support/views"_s,
            { { u"name"_s, u"Mine"_s }, { u"filters"_s, QJsonObject { { u"assignee_id"_s, u"p-1"_s } } } } },
        { "rename view", [](TarnAPI &a) { attempt(renameSupportView(a, oddId, u"New"_s)); }, u"PATCH"_s,
            u"/api/support/views/"_s + oddIdSent, { { u"name"_s, u"New"_s } } },
        { "delete view", [](TarnAPI &a) { attempt(deleteSupportView(a, oddId)); }, u"DELETE"_s,
            u"/api/support/views/"_s + oddIdSent, {} },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.call << row.method << row.path << row.body;
}

void TestSupportCalls::wireForm()
{
    QFETCH(Call, call);
    QFETCH(QString, method);
    QFETCH(QString, path);
    QFETCH(QJsonObject, body);

    TarnAPI &api = client.as(maren);
    client.workspace->clearRequests();
    call(api);
    const QJsonArray sent = client.workspace->requests();
    QCOMPARE(sent.size(), 1);
    const QJsonObject request = sent.first().toObject();
    QCOMPARE(request.value("method"_L1).toString(), method);
    QCOMPARE(request.value("path"_L1).toString(), path);
    const QByteArray sentBody = request.value("body"_L1).toString().toUtf8();
    QCOMPARE(sentBody.isEmpty() ? QJsonObject() : QJsonDocument::fromJson(sentBody).object(), body);
}

void TestSupportCalls::refusals_data()
{
    QTest::addColumn<Refused>("call");
    QTest::addColumn<QString>("message");

    using namespace TarnSupportCalls;
    const QString tomorrow = QDate::currentDate().addDays(1).toString(Qt::ISODate);
    const struct {
        const char *label;
        Refused call;
        QString message;
    } rows[] {
        { "a task without a title", [](TarnAPI &a) { return failureOf(createSupportTask(a, { .title = u"  "_s })); },
            u"needs a title"_s },
        { "an unknown status",
            [this](TarnAPI &a) {
                return failureOf(updateSupportTask(a, newTask(u"x"_s), { .version = 1, .status = u"lost"_s }));
            },
            u"\"status\" is one of"_s },
        { "an assignee off the board",
            [](TarnAPI &a) { return failureOf(createSupportTask(a, { .title = u"x"_s, .assignee_id = u"p-sam"_s })); },
            u"does not work on the support board"_s },
        { "time on a day to come",
            [this, tomorrow](TarnAPI &a) {
                return failureOf(logSupportTime(a, newTask(u"x"_s), { .minutes = 30, .day = tomorrow }));
            },
            u"still to come"_s },
        { "stopping a timer that runs elsewhere",
            [this](TarnAPI &a) { return failureOf(trackSupportTime(a, newTask(u"x"_s), u"stop"_s)); },
            u"not running on this task"_s },
        { "a subtask of a subtask",
            [this](TarnAPI &a) {
                const QString parent = newTask(u"x"_s);
                const QString child = tarnWaitFor(createSupportSubtask(a, parent, u"y"_s)).id;
                return failureOf(createSupportSubtask(a, child, u"z"_s));
            },
            u"cannot have subtasks of its own"_s },
        { "a change that does not say its version",
            [this](TarnAPI &a) {
                return failureOf(updateSupportTask(a, newTask(u"x"_s), { .version = 0, .title = u"y"_s }));
            },
            u"in the meantime"_s },
        { "a note with no text", [](TarnAPI &a) { return failureOf(addSupportClientNote(a, u"c-quill"_s, u" "_s)); },
            u"needs text"_s },
        { "a customer that is not there", [](TarnAPI &a) { return failureOf(supportClient(a, u"c-nobody"_s)); },
            u"No such customer"_s },
        { "renaming another person's view",
            [this](TarnAPI &a) {
                const QString id = tarnWaitFor(supportBoard(a)).views.first().id;
                return failureOf(renameSupportView(client.as(tomas), id, u"Mine now"_s));
            },
            u"No such view"_s },
        { "recurring work with no schedule",
            [](TarnAPI &a) { return failureOf(addSupportRecurring(a, { .title = u"x"_s, .every = u"day"_s })); },
            u"\"every\" is"_s },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.call << row.message;
}

void TestSupportCalls::refusals()
{
    QFETCH(Refused, call);
    QFETCH(QString, message);
    const QString answer = call(client.as(maren));
    QVERIFY2(answer.contains(message), qPrintable(answer));
}

void TestSupportCalls::theDemoBoard()
{
    InboxTestClient demo;
    QCOMPARE(demo.start(), QString());
    const TarnSupportBoard board = tarnWaitFor(TarnSupportCalls::supportBoard(demo.as(maren)));
    QVERIFY(board.tasks.size() >= 40);
    QVERIFY(std::none_of(board.tasks.cbegin(), board.tasks.cend(),
        [](const TarnSupportTaskSummary &task) { return task.parent_id.has_value(); }));
    const TarnSupportTaskSummary kiosk = cardNamed(board, u"Gym check-in kiosk freezes"_s);
    QCOMPARE(kiosk.subtask_count, 2);
    QCOMPARE(kiosk.subtasks_done, 1);
    QCOMPARE(kiosk.logged_minutes, 110);
    QVERIFY(board.timer && board.timer->task_id == kiosk.id);
    QCOMPARE(board.recurring.size(), 4);
    QCOMPARE(board.views.size(), 1);
    QCOMPARE(board.people.size(), 4); // those with the Support app
    QVERIFY(!board.time_entries.isEmpty());

    // Someone without the Support app is turned away.
    QVERIFY(failureOf(TarnSupportCalls::supportBoard(demo.as(u"sam@halvard.example"_s))).contains(u"not open"_s));
}

void TestSupportCalls::aStaleMoveIsRefusedWithTheCurrentState()
{
    TarnAPI &mine = client.as(maren);
    TarnAPI &theirs = client.as(tomas);
    const QString id = newTask(u"Shared card"_s);
    const qint64 version = tarnWaitFor(TarnSupportCalls::supportTask(theirs, id)).task.version;

    const TarnSupportTaskSummary moved = tarnWaitFor(TarnSupportCalls::updateSupportTask(
        mine, id, { .version = version, .status = u"done"_s, .assignee_id = u"p-jonah"_s }));
    QCOMPARE(moved.version, version + 1);
    const QString refusal
        = failureOf(TarnSupportCalls::updateSupportTask(theirs, id, { .version = version, .status = u"waiting"_s }));
    QVERIFY2(refusal.contains(u"“Done”"_s) && refusal.contains(u"Jonah Whitfield"_s), qPrintable(refusal));
    const TarnSupportTaskSummary now = tarnWaitFor(TarnSupportCalls::supportTask(theirs, id)).task;
    QCOMPARE(now.status, u"done"_s);
    QCOMPARE(now.version, version + 1);
}

void TestSupportCalls::recurringWorkCompletedTwiceAtOnceMakesOneNextTask()
{
    TarnAPI &mine = client.as(maren);
    TarnAPI &theirs = client.as(tomas);
    const QString first = QDate::currentDate().toString(Qt::ISODate);
    const QString rule = tarnWaitFor(TarnSupportCalls::addSupportRecurring(mine,
                                         { .title = u"Rotate backups"_s, .every = u"week"_s, .first_due = first }))
                             .id;
    const auto occurrences = [&] {
        QStringList due;
        for (const TarnSupportTaskSummary &task : tarnWaitFor(TarnSupportCalls::supportBoard(mine)).tasks)
            if (task.recurring_id == rule)
                due.append(task.due_date.value_or(QString()) + u' ' + task.status);
        due.sort();
        return due;
    };
    const TarnSupportTaskSummary open
        = cardNamed(tarnWaitFor(TarnSupportCalls::supportBoard(mine)), u"Rotate backups"_s);
    QCOMPARE(open.due_date, first);

    // Both requests are on the wire before either answer is read.
    auto a = TarnSupportCalls::updateSupportTask(mine, open.id, { .version = open.version, .status = u"done"_s });
    auto b = TarnSupportCalls::updateSupportTask(theirs, open.id, { .version = open.version, .status = u"done"_s });
    const QString failures = failureOf(std::move(a)) + failureOf(std::move(b));
    QVERIFY2(failures.contains(u"in the meantime"_s), qPrintable(failures));
    const QString next = QDate::currentDate().addDays(7).toString(Qt::ISODate);
    QCOMPARE(occurrences(), (QStringList { first + u" done"_s, next + u" todo"_s }));

    // Reopened and completed again: still that one next task.
    const qint64 version = tarnWaitFor(TarnSupportCalls::supportTask(mine, open.id)).task.version;
    const qint64 reopened
        = tarnWaitFor(TarnSupportCalls::updateSupportTask(mine, open.id, { .version = version, .status = u"todo"_s }))
              .version;
    QCOMPARE(
        failureOf(TarnSupportCalls::updateSupportTask(mine, open.id, { .version = reopened, .status = u"done"_s })),
        QString());
    QCOMPARE(occurrences(), (QStringList { first + u" done"_s, next + u" todo"_s }));

    // A stopped rule makes no more.
    QVERIFY(tarnWaitFor(TarnSupportCalls::stopSupportRecurring(mine, rule)).ok);
    const TarnSupportTaskSummary nextTask
        = cardNamed(tarnWaitFor(TarnSupportCalls::supportBoard(mine)), u"Rotate backups"_s);
    QCOMPARE(failureOf(TarnSupportCalls::updateSupportTask(
                 mine, nextTask.id, { .version = nextTask.version, .status = u"done"_s })),
        QString());
    QCOMPARE(occurrences(), (QStringList { first + u" done"_s, next + u" done"_s }));
}

void TestSupportCalls::aTimerOutlivesARestartOfTheService()
{
    TarnAPI &api = client.as(tomas);
    const QString first = newTask(u"Timed work"_s);
    const QString second = newTask(u"Other work"_s);
    const TarnSupportTimerState started = tarnWaitFor(TarnSupportCalls::trackSupportTime(api, first, u"start"_s));
    QVERIFY(started.timer && started.timer->task_id == first);
    QCOMPARE(started.logged, std::nullopt);

    client.workspace->halt();
    QVERIFY2(client.workspace->restart(), qPrintable(client.workspace->error()));
    const std::optional<TarnSupportTimer> after = tarnWaitFor(TarnSupportCalls::supportBoard(api)).timer;
    QCOMPARE(after, started.timer);

    // Starting on another task stops and logs the first.
    const TarnSupportTimerState switched = tarnWaitFor(TarnSupportCalls::trackSupportTime(api, second, u"start"_s));
    QVERIFY(switched.timer && switched.timer->task_id == second);
    QVERIFY(switched.logged && switched.logged->task_id == first && switched.logged->minutes == 1);
    const TarnSupportTimerState stopped = tarnWaitFor(TarnSupportCalls::trackSupportTime(api, second, u"stop"_s));
    QCOMPARE(stopped.timer, std::nullopt);
    QCOMPARE(tarnWaitFor(TarnSupportCalls::supportTask(api, second)).task.logged_minutes, 1);
}

void TestSupportCalls::filesUpAndDown()
{
    TarnAPI &api = client.as(maren);
    const QString task = newTask(u"With files"_s);
    const QByteArray bytes = QByteArray(3000, 'x') + QByteArray("\0\xff", 2);
    const QString id = tarnWaitFor(TarnSupportCalls::attachSupportFile(api, task,
                                       { .name = u"log ü.txt"_s, .data = QString::fromLatin1(bytes.toBase64()) }))
                           .id;
    QCOMPARE(tarnWaitFor(TarnSupportCalls::downloadSupportFile(api, id)), bytes);
    const TarnSupportTask detail = tarnWaitFor(TarnSupportCalls::supportTask(api, task));
    QCOMPARE(detail.files.size(), 1);
    QCOMPARE(detail.files.first().size, bytes.size());

    // The service keeps the limit too, naming the file.
    const QByteArray large(SupportBoardRules::fileLimit + 1, 'y');
    QCOMPARE(failureOf(TarnSupportCalls::attachSupportFile(
                 api, task, { .name = u"huge.bin"_s, .data = QString::fromLatin1(large.toBase64()) })),
        u"“huge.bin” is larger than 5 MB, the most a task's file may be."_s);
}

void TestSupportCalls::viewsAndClientNotes()
{
    TarnAPI &api = client.as(tomas);
    const QString id = tarnWaitFor(
        TarnSupportCalls::saveSupportView(api, { .name = u"Bakery"_s, .filters = { .client_id = u"c-fernhill"_s } }))
                           .id;
    QVERIFY(failureOf(TarnSupportCalls::saveSupportView(api, { .name = u"Bakery"_s })).contains(u"already have"_s));
    QVERIFY(tarnWaitFor(TarnSupportCalls::renameSupportView(api, id, u"Fernhill"_s)).ok);
    const QList<TarnSupportSavedView> views = tarnWaitFor(TarnSupportCalls::supportBoard(api)).views;
    QCOMPARE(views.size(), 1); // the owner's demo view is hers alone
    QCOMPARE(views.first().name, u"Fernhill"_s);
    QCOMPARE(views.first().filters.client_id, u"c-fernhill"_s);
    QVERIFY(tarnWaitFor(TarnSupportCalls::deleteSupportView(api, id)).ok);
    QVERIFY(failureOf(TarnSupportCalls::deleteSupportView(api, id)).contains(u"No such view"_s));

    QCOMPARE(failureOf(TarnSupportCalls::addSupportClientNote(api, u"c-oakline"_s, u"Gate code 4410"_s)), QString());
    const TarnSupportClient oakline = tarnWaitFor(TarnSupportCalls::supportClient(api, u"c-oakline"_s));
    QCOMPARE(oakline.name, u"Oakline Studio"_s);
    QCOMPARE(oakline.notes.last().body, u"Gate code 4410"_s);
    QCOMPARE(oakline.notes.last().author_name, u"Tomas Reyes"_s);
    QVERIFY(!oakline.tasks.isEmpty());
}

void TestSupportCalls::aDataFolderWithoutABoardGetsTheDemoOne()
{
    // A folder made before there was a board: its other data stays, the board comes.
    InboxTestClient older;
    QCOMPARE(older.start(), QString());
    older.workspace->halt();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"older"_s);
        db.setDatabaseName(QDir(older.workspace->dataPath()).filePath(u"workspace.sqlite"_s));
        QVERIFY(db.open());
        QSqlQuery q(db);
        for (const char *table : { "support_timers", "support_time", "support_comments", "support_files",
                 "support_client_notes", "support_views" })
            QVERIFY(q.exec(u"DELETE FROM "_s + QLatin1StringView(table)));
        QVERIFY(q.exec(u"DELETE FROM support_tasks WHERE parent_id IS NOT NULL"_s));
        QVERIFY(q.exec(u"DELETE FROM support_tasks"_s));
        QVERIFY(q.exec(u"DELETE FROM support_recurring"_s));
        db.close();
    }
    QSqlDatabase::removeDatabase(u"older"_s);
    QVERIFY2(older.workspace->restart(), qPrintable(older.workspace->error()));
    const TarnSupportBoard board = tarnWaitFor(TarnSupportCalls::supportBoard(older.as(maren)));
    QVERIFY(board.tasks.size() >= 40);
    QCOMPARE(board.recurring.size(), 4);
    QVERIFY(board.timer.has_value());
}

void TestSupportCalls::aCardCountsWhatHangsOffItsTask()
{
    TarnAPI &api = client.as(maren);
    const QString task
        = tarnWaitFor(TarnSupportCalls::createSupportTask(
                          api, { .title = u"Counted"_s, .client_id = u"c-harbor"_s, .assignee_id = u"p-jonah"_s }))
              .id;
    const QString first = tarnWaitFor(TarnSupportCalls::createSupportSubtask(api, task, u"One"_s)).id;
    QCOMPARE(failureOf(TarnSupportCalls::createSupportSubtask(api, task, u"Two"_s)), QString());
    QCOMPARE(
        failureOf(TarnSupportCalls::updateSupportTask(api, first, { .version = 1, .status = u"done"_s })), QString());
    QCOMPARE(failureOf(TarnSupportCalls::addSupportTaskComment(api, task, u"Noted"_s)), QString());
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    QCOMPARE(failureOf(TarnSupportCalls::logSupportTime(api, task, { .minutes = 20, .day = today })), QString());
    QCOMPARE(failureOf(TarnSupportCalls::logSupportTime(api, first, { .minutes = 5, .day = today })), QString());

    const TarnSupportTask detail = tarnWaitFor(TarnSupportCalls::supportTask(api, task));
    QCOMPARE(detail.task.subtask_count, 2);
    QCOMPARE(detail.task.subtasks_done, 1);
    QCOMPARE(detail.task.comment_count, 1);
    QCOMPARE(detail.task.logged_minutes, 20); // a subtask's time is its own
    // A subtask takes its task's customer and assignee, and stays off the board.
    QCOMPARE(detail.subtasks.first().client_id, u"c-harbor"_s);
    QCOMPARE(detail.subtasks.first().assignee_id, u"p-jonah"_s);
    const TarnSupportBoard board = tarnWaitFor(TarnSupportCalls::supportBoard(api));
    QVERIFY(std::none_of(board.tasks.cbegin(), board.tasks.cend(),
        [&first](const TarnSupportTaskSummary &card) { return card.id == first; }));
    // The customer's page adds up every task's time, subtasks included.
    const qint64 before = tarnWaitFor(TarnSupportCalls::supportClient(api, u"c-harbor"_s)).logged_minutes;
    QCOMPARE(failureOf(TarnSupportCalls::logSupportTime(api, first, { .minutes = 10, .day = today })), QString());
    QCOMPARE(tarnWaitFor(TarnSupportCalls::supportClient(api, u"c-harbor"_s)).logged_minutes, before + 10);
}

QTEST_GUILESS_MAIN(TestSupportCalls)
#include "tst_supportcalls.moc"
