#include "TarnWaitFor.h"
#include "assistant/AgentTestPerson.h"
#include "assistant/TarnAgentCalls.h"
#include "service/TarnAPIError.h"
#include "shell/TarnShell.h"
#include "support/FailureOf.h"
#include "support/TestWorkspace.h"

#include <QTest>
#include <QUuid>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Person = AgentTestPerson;

QString newKey()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QString ask(TarnAPI &api, const QString &content, TarnPiloRun run = TarnPiloRun::fast,
    const std::optional<QString> &page = std::nullopt)
{
    return tarnWaitFor(TarnAgentCalls::askAgent(api, content, page, run, newKey())).id;
}

std::optional<TarnAgentRequest> find(TarnAPI &api, const QString &id)
{
    const TarnAgentConversation conversation = tarnWaitFor(TarnAgentCalls::loadConversation(api));
    const auto at = std::find_if(conversation.requests.begin(), conversation.requests.end(),
        [&id](const TarnAgentRequest &request) { return request.id == id; });
    return at == conversation.requests.end() ? std::nullopt : std::optional(*at);
}

bool settled(TarnAPI &api, const QString &id)
{
    const std::optional<TarnAgentRequest> request = find(api, id);
    return request && request->status != "queued"_L1 && request->status != "running"_L1;
}

} // namespace

struct ModeRow {
    QString mode;
    bool configured;
    bool online;
    bool pastReplies;
    QString refusal;
};
Q_DECLARE_METATYPE(ModeRow)

// The assistant's calls against a real workspace, whose agent works each
// request on its own timer: a few seconds per request.
class TestAgentCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void agentWorksRequests();
    void repeatedKeyStoresOnce();
    void blockedWorkIsReviewedByTheOwner();
    void renameAndRemove();
    void modes_data();
    void modes();

private:
    std::unique_ptr<TestWorkspace> workspace;
    Person owner;
    Person manager;
};

void TestAgentCalls::initTestCase()
{
    workspace = std::make_unique<TestWorkspace>();
    QVERIFY2(workspace->isRunning(), qPrintable(workspace->error()));
    owner = Person::signIn(*workspace, u"maren@halvard.example"_s);
    manager = Person::signIn(*workspace, u"tomas@halvard.example"_s);
    QVERIFY(owner.api && manager.api);
}

void TestAgentCalls::agentWorksRequests()
{
    struct Row {
        QString content;
        TarnPiloRun run;
        QString status;
        QString replyHas;
    };
    const Row rows[] = {
        { u"Who is on the team?"_s, TarnPiloRun::fast, u"done"_s, u"- Maren Holt, admin (owner)\n"_s },
        { u"What can you do?"_s, TarnPiloRun::process, u"done"_s, u"How I worked: I read my own list"_s },
        { u"Where am I signed in?"_s, TarnPiloRun::fast, u"done"_s, u"You are signed in in"_s },
        { u"Summarize the sales room's last day"_s, TarnPiloRun::fast, u"failed"_s, u"I can't do that yet."_s },
        { u"Delete last year's quotes"_s, TarnPiloRun::fast, u"blocked"_s, QString() },
    };
    QStringList ids;
    for (const Row &row : rows)
        ids.append(ask(*owner.api, row.content, row.run, u"chat"_s));

    const std::optional<TarnAgentRequest> fresh = find(*owner.api, ids.first());
    QVERIFY(fresh);
    QCOMPARE(fresh->status, u"queued"_s);
    QCOMPARE(fresh->page, u"chat"_s);
    QCOMPARE(TarnShell::agentStatusLabel(fresh->status), u"Waiting to start"_s);

    for (qsizetype i = 0; i < ids.size(); ++i) {
        QTRY_VERIFY_WITH_TIMEOUT(settled(*owner.api, ids.at(i)), 10000);
        const TarnAgentRequest done = *find(*owner.api, ids.at(i));
        QCOMPARE(done.status, rows[i].status);
        QVERIFY2(done.reply.value_or(QString()).contains(rows[i].replyHas), qPrintable(done.reply.value_or(u"-"_s)));
    }
}

void TestAgentCalls::repeatedKeyStoresOnce()
{
    const QString key = newKey();
    const QString content = u"Which Google services are connected?"_s;
    const QString first = tarnWaitFor(TarnAgentCalls::askAgent(*owner.api, content, {}, TarnPiloRun::fast, key)).id;
    const QString again = tarnWaitFor(TarnAgentCalls::askAgent(*owner.api, content, {}, TarnPiloRun::fast, key)).id;
    QCOMPARE(again, first);
    const TarnAgentConversation conversation = tarnWaitFor(TarnAgentCalls::loadConversation(*owner.api));
    QCOMPARE(std::count_if(conversation.requests.begin(), conversation.requests.end(),
                 [&first](const TarnAgentRequest &request) { return request.id == first; }),
        1);
    // Keys belong to their person: the same key from someone else is a new request.
    const QString other = tarnWaitFor(TarnAgentCalls::askAgent(*manager.api, content, {}, TarnPiloRun::fast, key)).id;
    QVERIFY(other != first);
}

void TestAgentCalls::blockedWorkIsReviewedByTheOwner()
{
    const QString approved = ask(*manager.api, u"Pay the supplier invoice from Northwind"_s);
    const QString declined = ask(*manager.api, u"Refund the last order of Lumen Bakery"_s);
    QTRY_VERIFY_WITH_TIMEOUT(settled(*manager.api, approved) && settled(*manager.api, declined), 10000);
    const TarnAgentRequest mine = *find(*manager.api, approved);
    QCOMPARE(mine.status, u"blocked"_s);
    QCOMPARE(TarnShell::agentStatusLabel(mine.status), u"Still working"_s);

    const QString refused = u"Only the workspace owner reviews blocked work."_s;
    QCOMPARE(failureOf(TarnAgentCalls::blockedAgentRequests(*manager.api)), refused);
    QCOMPARE(failureOf(TarnAgentCalls::resumeAgentRequest(*manager.api, approved, u"approve"_s, {})), refused);

    const TarnBlockedAgentRequests blocked = tarnWaitFor(TarnAgentCalls::blockedAgentRequests(*owner.api));
    const auto listed = [&blocked](const QString &id) {
        return std::any_of(blocked.requests.begin(), blocked.requests.end(),
            [&id](const TarnAgentRequest &request) { return request.id == id; });
    };
    QVERIFY(listed(approved) && listed(declined));

    const TarnAgentResumed resumed = tarnWaitFor(
        TarnAgentCalls::resumeAgentRequest(*owner.api, approved, u"approve"_s, u"Matched to bank line 12"_s));
    QCOMPARE(resumed.id, approved);
    QCOMPARE(resumed.status, u"running"_s);
    QCOMPARE(tarnWaitFor(TarnAgentCalls::resumeAgentRequest(*owner.api, declined, u"decline"_s, u"Already refunded"_s))
                 .status,
        u"failed"_s);
    QCOMPARE(failureOf(TarnAgentCalls::resumeAgentRequest(*owner.api, declined, u"approve"_s, {})),
        u"That request is not waiting for a review."_s);

    QTRY_VERIFY_WITH_TIMEOUT(settled(*manager.api, approved), 10000);
    const TarnAgentRequest done = *find(*manager.api, approved);
    QCOMPARE(done.status, u"done"_s);
    QVERIFY(done.reply->startsWith(u"Approved by Maren Holt (\"Matched to bank line 12\")."_s));
    QCOMPARE(find(*manager.api, declined)->reply, u"Declined by Maren Holt: Already refunded"_s);
}

void TestAgentCalls::renameAndRemove()
{
    const QString id = ask(*owner.api, u"Who is on the team?"_s);
    tarnWaitFor(TarnAgentCalls::renameAgentRequest(*owner.api, id, u"  Roles  "_s));
    QCOMPARE(find(*owner.api, id)->title, u"Roles"_s);

    const QString missing = u"No such request."_s;
    QCOMPARE(failureOf(TarnAgentCalls::renameAgentRequest(*manager.api, id, u"Mine now"_s)), missing);
    QCOMPARE(failureOf(TarnAgentCalls::removeAgentRequest(*manager.api, id)), missing);
    // An id with path characters stays one escaped segment of this route.
    QCOMPARE(failureOf(TarnAgentCalls::removeAgentRequest(*owner.api, id + u"/resume"_s)), missing);

    QVERIFY(tarnWaitFor(TarnAgentCalls::removeAgentRequest(*owner.api, id)).ok);
    QVERIFY(!find(*owner.api, id));
}

void TestAgentCalls::modes_data()
{
    QTest::addColumn<ModeRow>("row");
    QTest::addRow("online") << ModeRow { u"online"_s, true, true, true, QString() };
    QTest::addRow("offline") << ModeRow { u"offline"_s, true, false, true, u"Pilo isn't connected to Tarn yet."_s };
    QTest::addRow("off") << ModeRow { u"off"_s, false, false, false, u"Pilo isn't set up for this workspace."_s };
}

void TestAgentCalls::modes()
{
    QFETCH(ModeRow, row);
    TestWorkspace started({ u"--agent"_s, row.mode });
    QVERIFY2(started.isRunning(), qPrintable(started.error()));
    const Person person = Person::signIn(started, u"maren@halvard.example"_s);
    const TarnAgentConversation conversation = tarnWaitFor(TarnAgentCalls::loadConversation(*person.api));
    QCOMPARE(conversation.configured, row.configured);
    QCOMPARE(conversation.online, row.online);
    // The demo's past replies stay readable while the agent is away.
    QCOMPARE(std::any_of(conversation.requests.begin(), conversation.requests.end(),
                 [](const TarnAgentRequest &request) { return request.reply.has_value(); }),
        row.pastReplies);
    QCOMPARE(
        failureOf(TarnAgentCalls::askAgent(*person.api, u"Who is on the team?"_s, {}, TarnPiloRun::fast, newKey())),
        row.refusal);
}

QTEST_GUILESS_MAIN(TestAgentCalls)
#include "tst_agentcalls.moc"
