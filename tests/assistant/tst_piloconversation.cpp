#include "TarnWaitFor.h"
#include "assistant/AgentTestPerson.h"
#include "assistant/NativePiloReview.h"
#include "assistant/TarnAgentCalls.h"
#include "assistant/TarnPiloConversation.h"
#include "support/TestWorkspace.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <QUuid>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

// How many of the person's stored requests ask exactly this.
qsizetype storedCount(TarnAPI &api, const QString &content)
{
    const TarnAgentConversation conversation = tarnWaitFor(TarnAgentCalls::loadConversation(api));
    return std::count_if(conversation.requests.begin(), conversation.requests.end(),
        [&content](const TarnAgentRequest &request) { return request.content == content; });
}

// The shown row asking this, or -1.
int rowOf(const NativeAgentRequestModel &model, const QString &content)
{
    const QList<TarnAgentRequest> &rows = model.rows();
    const auto at = std::find_if(
        rows.begin(), rows.end(), [&content](const TarnAgentRequest &request) { return request.content == content; });
    return at == rows.end() ? -1 : static_cast<int>(at - rows.begin());
}

QString roleOf(NativeAgentRequestModel &model, int row, const QByteArray &role)
{
    return model.data(model.index(row), model.roleNames().key(role)).toString();
}

} // namespace

struct UncertainRow {
    QJsonObject fault;
    // Whether the service kept the request although its answer was lost.
    qsizetype storedBeforeSettling;
};
Q_DECLARE_METATYPE(UncertainRow)

struct ModeRow {
    QString mode;
    bool configured;
    bool pastRequestsShown;
};
Q_DECLARE_METATYPE(ModeRow)

// The assistant panel's state against a real workspace and its agent.
class TestPiloConversation : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void uncertainSendIsSettled_data();
    void uncertainSendIsSettled();
    void pollsARequestToItsReply();
    void hidesNoiseAndFoldsHistory();
    void sendingClosedWithoutAgent_data();
    void sendingClosedWithoutAgent();
    void ownerResumesBlockedWork();

private:
    std::unique_ptr<TestWorkspace> workspace;
    AgentTestPerson owner;
    AgentTestPerson manager;
    std::unique_ptr<TarnPiloConversation> conversation;
};

void TestPiloConversation::initTestCase()
{
    workspace = std::make_unique<TestWorkspace>();
    QVERIFY2(workspace->isRunning(), qPrintable(workspace->error()));
    owner = AgentTestPerson::signIn(*workspace, u"maren@halvard.example"_s);
    manager = AgentTestPerson::signIn(*workspace, u"tomas@halvard.example"_s);
    QVERIFY(owner.api && manager.api);
}

void TestPiloConversation::init()
{
    conversation = std::make_unique<TarnPiloConversation>(*owner.api);
    new QAbstractItemModelTester(
        conversation->requestsModel(), QAbstractItemModelTester::FailureReportingMode::QtTest, conversation.get());
    tarnWaitFor(conversation->refresh(false));
    QVERIFY(conversation->canSend());
}

void TestPiloConversation::cleanup()
{
    workspace->clearFaults();
    conversation.reset();
}

void TestPiloConversation::uncertainSendIsSettled_data()
{
    QTest::addColumn<UncertainRow>("row");
    const QJsonObject ask { { u"method"_s, u"POST"_s }, { u"path"_s, u"/api/agent-requests"_s } };
    // Every answer is cut until the line is mended: the network layer resends
    // a request whose connection closed once on its own, with the same key.
    QJsonObject cut = ask;
    cut.insert(u"cut"_s, true);
    cut.insert(u"times"_s, 0);
    QJsonObject garbled = ask;
    for (const auto &[key, value] : { std::pair(u"status"_s, QJsonValue(200)),
             std::pair(u"content_type"_s, QJsonValue(u"text/plain"_s)), std::pair(u"body"_s, QJsonValue(u"{"_s)) })
        garbled.insert(key, value);
    QTest::addRow("answer cut off after storing") << UncertainRow { cut, 1 };
    QTest::addRow("answer unreadable, nothing stored") << UncertainRow { garbled, 0 };
}

void TestPiloConversation::uncertainSendIsSettled()
{
    QFETCH(UncertainRow, row);
    const QString text = u"Who is on the team? (%1)"_s.arg(QString::fromUtf8(QTest::currentDataTag()));
    workspace->setFault(row.fault);
    QVERIFY(!tarnWaitFor(conversation->send(text, u"chat"_s, TarnPiloRun::fast)));
    QVERIFY(conversation->uncertainSend());
    QVERIFY(!conversation->canSend());
    QVERIFY(!conversation->error().isEmpty());
    QCOMPARE(storedCount(*owner.api, text), row.storedBeforeSettling);

    // Nothing else goes out while the first send is unsettled.
    QVERIFY(!tarnWaitFor(conversation->send(u"What can you do?"_s, std::nullopt, TarnPiloRun::fast)));
    QCOMPARE(storedCount(*owner.api, u"What can you do?"_s), 0);

    workspace->clearFaults();
    tarnWaitFor(conversation->refresh(true));
    QVERIFY(!conversation->uncertainSend());
    QVERIFY(conversation->canSend());
    QVERIFY(conversation->error().isEmpty());
    QCOMPARE(storedCount(*owner.api, text), 1);
    QVERIFY(rowOf(conversation->requestModel(), text) >= 0);
}

void TestPiloConversation::pollsARequestToItsReply()
{
    NativeAgentRequestModel &model = conversation->requestModel();
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    conversation->setActive(true);
    const QString text = u"Who is on the team, please?"_s;
    QVERIFY(tarnWaitFor(conversation->send(text, u"home"_s, TarnPiloRun::fast)));
    const int row = rowOf(model, text);
    QVERIFY(row >= 0);
    QCOMPARE(roleOf(model, row, "page"), u"home"_s);

    // Only the poll moves it on: nothing here reloads by hand.
    QTRY_COMPARE_WITH_TIMEOUT(roleOf(model, rowOf(model, text), "statusLabel"), u"Done"_s, 10000);
    QVERIFY(roleOf(model, rowOf(model, text), "reply").contains(u"- Priya Nair, member"_s));
    QCOMPARE(resets.size(), 0);
}

void TestPiloConversation::hidesNoiseAndFoldsHistory()
{
    const QString probe = u"Tarn Bridge Check 7"_s;
    QVERIFY(
        !tarnWaitFor(TarnAgentCalls::askAgent(*owner.api, probe, {}, TarnPiloRun::fast, u"probe-7"_s)).id.isEmpty());
    tarnWaitFor(conversation->refresh(false));
    QCOMPARE(rowOf(conversation->requestModel(), probe), -1);
    const int shown = conversation->requestModel().rowCount();
    QVERIFY(shown >= 2);
    QCOMPARE(conversation->foldedCount(), 0);

    // Forty days on, everything is older than any group keeps.
    conversation->setClock([] { return QDateTime::currentDateTime().addDays(40); });
    QCOMPARE(conversation->requestModel().rowCount(), 0);
    QCOMPARE(conversation->foldedCount(), shown);
    conversation->setShowHistory(true);
    QCOMPARE(conversation->requestModel().rowCount(), shown);
    QCOMPARE(conversation->foldedCount(), 0);
}

void TestPiloConversation::sendingClosedWithoutAgent_data()
{
    QTest::addColumn<ModeRow>("row");
    QTest::addRow("offline") << ModeRow { u"offline"_s, true, true };
    QTest::addRow("not set up") << ModeRow { u"off"_s, false, false };
}

void TestPiloConversation::sendingClosedWithoutAgent()
{
    QFETCH(ModeRow, row);
    TestWorkspace away({ u"--agent"_s, row.mode });
    QVERIFY2(away.isRunning(), qPrintable(away.error()));
    const AgentTestPerson person = AgentTestPerson::signIn(away, u"maren@halvard.example"_s);
    TarnPiloConversation state(*person.api);
    tarnWaitFor(state.refresh(false));
    QVERIFY(state.loaded());
    QVERIFY(!state.online());
    QCOMPARE(state.configured(), row.configured);
    QVERIFY(!state.canSend());
    QCOMPARE(state.requestModel().rowCount() > 0, row.pastRequestsShown);

    away.clearRequests();
    QVERIFY(!tarnWaitFor(state.send(u"Who is on the team?"_s, std::nullopt, TarnPiloRun::fast)));
    QCOMPARE(away.requests().size(), 0);
}

void TestPiloConversation::ownerResumesBlockedWork()
{
    TarnPiloConversation asker(*manager.api);
    tarnWaitFor(asker.refresh(false));
    asker.setActive(true);
    const QString text = u"Wire the printer's deposit"_s;
    QVERIFY(tarnWaitFor(asker.send(text, std::nullopt, TarnPiloRun::fast)));
    QTRY_COMPARE_WITH_TIMEOUT(
        asker.requestModel().rows().at(rowOf(asker.requestModel(), text)).status, u"blocked"_s, 10000);
    QCOMPARE(roleOf(asker.requestModel(), rowOf(asker.requestModel(), text), "statusLabel"), u"Still working"_s);

    NativePiloReview notTheOwner(*manager.api);
    tarnWaitFor(notTheOwner.refresh());
    QCOMPARE(notTheOwner.error(), u"Only the workspace owner reviews blocked work."_s);
    QCOMPARE(notTheOwner.requestModel().rowCount(), 0);

    NativePiloReview review(*owner.api);
    new QAbstractItemModelTester(
        review.requestsModel(), QAbstractItemModelTester::FailureReportingMode::QtTest, &review);
    tarnWaitFor(review.refresh());
    const int row = rowOf(review.requestModel(), text);
    QVERIFY(row >= 0);
    QVERIFY(rowOf(review.requestModel(), u"Refund invoice 1042 to Lumen Bakery"_s) >= 0);
    const QString id = roleOf(review.requestModel(), row, "requestId");
    QVERIFY(!tarnWaitFor(notTheOwner.resume(id, u"approve"_s, {})));
    QVERIFY(tarnWaitFor(review.resume(id, u"approve"_s, u"Paid from the petty cash"_s)));
    QVERIFY(review.error().isEmpty());
    QCOMPARE(rowOf(review.requestModel(), text), -1);
    QVERIFY(!tarnWaitFor(review.resume(id, u"approve"_s, {})));
    QCOMPARE(review.error(), u"That request is not waiting for a review."_s);

    QTRY_COMPARE_WITH_TIMEOUT(
        roleOf(asker.requestModel(), rowOf(asker.requestModel(), text), "statusLabel"), u"Done"_s, 10000);
}

QTEST_GUILESS_MAIN(TestPiloConversation)
#include "tst_piloconversation.moc"
