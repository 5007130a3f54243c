#include "TarnWaitFor.h"
#include "chat/TarnChatCalls.h"
#include "chat/huddle/HuddleTestTeam.h"
#include "chat/huddle/TarnHuddleCalls.h"
#include "support/FailureOf.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

QStringList people(const TarnHuddleState &state)
{
    QStringList ids;
    for (const TarnHuddleParticipant &p : state.participants.value_or(QList<TarnHuddleParticipant>()))
        ids.append(p.user_id);
    return ids;
}

TarnHuddlePolled pollOnce(TarnAPI &api, const QString &room, const QString &sid, qint64 after, qint64 version, int wait)
{
    TarnHuddlePoll poll { .sid = sid, .after = after, .version = version, .wait = wait };
    return tarnWaitFor(TarnHuddleCalls::poll(api, room, poll));
}

} // namespace

// The huddle calls against the local workspace: joining with invites that
// ring, the long poll with its signals and versions, marks, leaving, being
// taken out, and refusals.
class TestHuddleCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void joinRingsSignalsAndLeaves();
    void heldPollWakesOnChange_data();
    void heldPollWakesOnChange();
    void refusals_data();
    void refusals();
    void silentMemberIsTakenOutAndIceServersComeFromTheOption();

private:
    HuddleTestTeam team;
    QString sales;
    QString privateRoom;
};

void TestHuddleCalls::initTestCase()
{
    const QString error
        = team.start({ u"maren@halvard.example"_s, u"tomas@halvard.example"_s, u"sam@halvard.example"_s });
    QVERIFY2(error.isEmpty(), qPrintable(error));
    sales = team.roomNamed(u"sales"_s);
    QVERIFY(!sales.isEmpty());
    const TarnCreatedID made
        = tarnWaitFor(TarnChatCalls::createChannel(*team.members[0].api, u"huddle-private"_s, true, { u"p-tomas"_s }));
    privateRoom = made.id;
}

void TestHuddleCalls::joinRingsSignalsAndLeaves()
{
    TarnAPI &maren = *team.members[0].api;
    TarnAPI &tomas = *team.members[1].api;
    const TarnHuddleJoined first
        = tarnWaitFor(TarnHuddleCalls::joinHuddle(maren, sales, { u"p-tomas"_s, u"p-nobody"_s }));
    QCOMPARE(first.state.joined, true);
    QCOMPARE(first.state.started_by, u"p-maren"_s);
    QCOMPARE(people(first.state), QStringList { u"p-maren"_s });

    // Tomas was invited and rings; Sam sees the open channel's huddle without ringing.
    const TarnHuddleList seen = tarnWaitFor(TarnHuddleCalls::huddles(tomas));
    QCOMPARE(seen.huddles.size(), 1);
    QCOMPARE(seen.huddles.first().ringing, true);
    const TarnHuddleList samSees = tarnWaitFor(TarnHuddleCalls::huddles(*team.members[2].api));
    QCOMPARE(samSees.huddles.value(0).ringing, false);

    const TarnHuddleJoined second = tarnWaitFor(TarnHuddleCalls::joinHuddle(tomas, sales, {}));
    QCOMPARE(people(second.state), (QStringList { u"p-maren"_s, u"p-tomas"_s }));

    // Newer than Maren's version: answered at once, however long she would wait.
    const TarnHuddlePolled joined = pollOnce(maren, sales, first.sid, 0, *first.state.version, 25);
    QCOMPARE(people(joined.state), (QStringList { u"p-maren"_s, u"p-tomas"_s }));
    QCOMPARE(joined.state.participants->at(1).name, u"Tomas Reyes"_s);

    const TarnHuddleSignalData offer { .description = TarnHuddleDescription { u"offer"_s, u"v=0"_s } };
    const TarnHuddleSignalData ice { .candidates
        = QList<TarnHuddleCandidate> { { u"candidate:1"_s, u"0"_s, 0 }, { u"candidate:2"_s, std::nullopt, 0 } } };
    tarnWaitFor(TarnHuddleCalls::signal(tomas, sales, { second.sid, first.conn, u"offer"_s, offer }));
    tarnWaitFor(TarnHuddleCalls::signal(tomas, sales, { second.sid, first.conn, u"ice"_s, ice }));
    const TarnHuddlePolled signalled = pollOnce(maren, sales, first.sid, 0, *joined.state.version, 25);
    QCOMPARE(signalled.signals_.size(), 2);
    QCOMPARE(signalled.signals_[0].from, u"p-tomas"_s);
    QCOMPARE(signalled.signals_[0].from_conn, second.conn);
    QCOMPARE(signalled.signals_[0].data, offer);
    QCOMPARE(signalled.signals_[1].data, ice);
    QVERIFY(signalled.signals_[0].seq < signalled.signals_[1].seq);
    // Signals at or below `after` are not sent again.
    tarnWaitFor(TarnHuddleCalls::setHuddleState(tomas, sales, { .sid = second.sid, .muted = true }));
    const TarnHuddlePolled muted
        = pollOnce(maren, sales, first.sid, signalled.signals_.last().seq, *joined.state.version, 25);
    QVERIFY(muted.signals_.isEmpty());
    QCOMPARE(muted.state.participants->at(1).muted, true);
    QVERIFY(*muted.state.version > *joined.state.version);

    QVERIFY(tarnWaitFor(TarnHuddleCalls::leaveHuddle(tomas, sales, second.sid)).ok);
    const TarnHuddlePolled gone = pollOnce(tomas, sales, second.sid, 0, 0, 25);
    QVERIFY(!gone.joined);
    QCOMPARE(people(gone.state), QStringList { u"p-maren"_s });
    // The last one out ends the huddle.
    QVERIFY(tarnWaitFor(TarnHuddleCalls::leaveHuddle(maren, sales, first.sid)).ok);
    QVERIFY(tarnWaitFor(TarnHuddleCalls::huddles(tomas)).huddles.isEmpty());
}

void TestHuddleCalls::heldPollWakesOnChange_data()
{
    using Change = std::function<void(TarnAPI &, const TarnHuddleJoined &, const TarnHuddleJoined &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("signalCount");
    QTest::addColumn<int>("participants");
    struct Row {
        const char *label;
        Change change;
        int signalCount;
        int participants;
    };
    const Row rows[] {
        { "a signal",
            [](TarnAPI &api, const TarnHuddleJoined &held, const TarnHuddleJoined &other) {
                tarnWaitFor(TarnHuddleCalls::signal(api, held.state.room_id.value(),
                    { other.sid, held.conn, u"ice"_s, { .candidates = QList<TarnHuddleCandidate> {} } }));
            },
            1, 2 },
        { "a mark",
            [](TarnAPI &api, const TarnHuddleJoined &held, const TarnHuddleJoined &other) {
                tarnWaitFor(TarnHuddleCalls::setHuddleState(
                    api, held.state.room_id.value(), { .sid = other.sid, .video = true }));
            },
            0, 2 },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.change << row.signalCount << row.participants;
}

// A poll with nothing new is held, and answered as soon as something changes.
void TestHuddleCalls::heldPollWakesOnChange()
{
    using Change = std::function<void(TarnAPI &, const TarnHuddleJoined &, const TarnHuddleJoined &)>;
    QFETCH(Change, change);
    QFETCH(int, signalCount);
    QFETCH(int, participants);
    TarnAPI &maren = *team.members[0].api;
    TarnAPI &tomas = *team.members[1].api;
    const TarnHuddleJoined held = tarnWaitFor(TarnHuddleCalls::joinHuddle(maren, sales, {}));
    const TarnHuddleJoined other = tarnWaitFor(TarnHuddleCalls::joinHuddle(tomas, sales, {}));
    const qint64 version = *pollOnce(maren, sales, held.sid, 0, 0, 0).state.version;

    std::optional<TarnHuddlePolled> answer;
    auto waiting = [&]() -> QCoro::Task<> {
        TarnHuddlePoll poll { .sid = held.sid, .after = 0, .version = version, .wait = 25 };
        answer = co_await TarnHuddleCalls::poll(maren, sales, poll);
    };
    QCoro::Task<> task = waiting();
    // Still held after a round trip of another call.
    QVERIFY(!tarnWaitFor(TarnHuddleCalls::huddles(maren)).huddles.isEmpty());
    QVERIFY(!answer);
    change(tomas, held, other);
    tarnWaitFor(std::move(task));
    QVERIFY(answer->joined);
    QCOMPARE(answer->signals_.size(), signalCount);
    QCOMPARE(answer->state.participants->size(), participants);

    tarnWaitFor(TarnHuddleCalls::leaveHuddle(tomas, sales, other.sid));
    tarnWaitFor(TarnHuddleCalls::leaveHuddle(maren, sales, held.sid));
}

void TestHuddleCalls::refusals_data()
{
    using Call = std::function<QString(TarnAPI &, const QString &room, const TarnHuddleJoined &)>;
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("error");
    struct Row {
        const char *label;
        Call call;
        QString error;
    };
    const Row rows[] {
        { "a room Sam cannot see",
            [this](TarnAPI &api, const QString &, const TarnHuddleJoined &) {
                return failureOf(TarnHuddleCalls::joinHuddle(api, privateRoom, {}));
            },
            u"No such room."_s },
        { "marks of another session",
            [](TarnAPI &api, const QString &room, const TarnHuddleJoined &) {
                return failureOf(TarnHuddleCalls::setHuddleState(api, room, { .sid = u"nope"_s, .muted = true }));
            },
            u"You are not in this huddle."_s },
        { "a signal to oneself",
            [](TarnAPI &api, const QString &room, const TarnHuddleJoined &mine) {
                return failureOf(TarnHuddleCalls::signal(api, room, { mine.sid, mine.conn, u"ice"_s, {} }));
            },
            u"That connection is not in this huddle."_s },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.call << row.error;
}

void TestHuddleCalls::refusals()
{
    using Call = std::function<QString(TarnAPI &, const QString &room, const TarnHuddleJoined &)>;
    QFETCH(Call, call);
    QFETCH(QString, error);
    TarnAPI &sam = *team.members[2].api;
    const QString general = team.roomNamed(u"general"_s);
    const TarnHuddleJoined mine = tarnWaitFor(TarnHuddleCalls::joinHuddle(sam, general, {}));
    QCOMPARE(call(sam, general, mine), error);
    tarnWaitFor(TarnHuddleCalls::leaveHuddle(sam, general, mine.sid));
}

void TestHuddleCalls::silentMemberIsTakenOutAndIceServersComeFromTheOption()
{
    HuddleTestTeam quick;
    const QString error = quick.start({ u"maren@halvard.example"_s, u"tomas@halvard.example"_s },
        { u"--huddle-drop-seconds"_s, u"1"_s, u"--ice-server"_s, u"stun:stun.example:3478"_s });
    QVERIFY2(error.isEmpty(), qPrintable(error));
    const QString room = quick.roomNamed(u"sales"_s);
    TarnAPI &maren = *quick.members[0].api;
    TarnAPI &tomas = *quick.members[1].api;
    const TarnHuddleJoined silent = tarnWaitFor(TarnHuddleCalls::joinHuddle(maren, room, {}));
    QCOMPARE(silent.ice_servers.size(), 1);
    QCOMPARE(silent.ice_servers.first().urls, QList<QString> { u"stun:stun.example:3478"_s });
    const TarnHuddleJoined polling = tarnWaitFor(TarnHuddleCalls::joinHuddle(tomas, room, {}));

    // Tomas keeps polling (held polls count as present); Maren says nothing.
    qint64 version = *polling.state.version;
    QStringList inIt = people(polling.state);
    for (int round = 0; round < 20 && inIt.size() > 1; ++round) {
        const TarnHuddlePolled polled = pollOnce(tomas, room, polling.sid, 0, version, 1);
        QVERIFY(polled.joined);
        version = *polled.state.version;
        inIt = people(polled.state);
    }
    QCOMPARE(inIt, QStringList { u"p-tomas"_s });
    QVERIFY(!pollOnce(maren, room, silent.sid, 0, 0, 1).joined);
}

QTEST_GUILESS_MAIN(TestHuddleCalls)
#include "tst_huddlecalls.moc"
