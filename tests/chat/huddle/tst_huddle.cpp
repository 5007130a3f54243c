#include "TarnWaitFor.h"
#include "chat/huddle/HuddleTestTeam.h"
#include "chat/huddle/NativeHuddle.h"
#include "chat/huddle/NativeHuddleTrack.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

enum class Fault { None, SameInstant, FirstSignal, Polls, Restart };

// Runs the event loop until `done` holds, up to `ms`, looking again at each
// tick: decoded audio arrives without a signal per buffer.
bool waitUntil(const std::function<bool()> &done, int ms = 15'000)
{
    QTimer tick;
    tick.start(20);
    QSignalSpy ticks(&tick, &QTimer::timeout);
    const QDeadlineTimer deadline(ms);
    while (!done() && !deadline.hasExpired())
        (void)ticks.wait(100);
    return done();
}

std::optional<TarnHuddleParticipant> personIn(const NativeHuddle &huddle, const QString &userID)
{
    for (const TarnHuddleParticipant &p :
        huddle.state().value_or(TarnHuddleState()).participants.value_or(QList<TarnHuddleParticipant>())) {
        if (p.user_id == userID)
            return p;
    }
    return std::nullopt;
}

bool mutedIn(const NativeHuddle &huddle, const QString &userID)
{
    return personIn(huddle, userID).value_or(TarnHuddleParticipant()).muted;
}

// Who turns which video on, and the frames the other side must decode.
struct VideoCase {
    int people;
    int sender; // 0 sorts first and offers to the others; the last answers them all
    bool screen;
    QSize size;
};

} // namespace

Q_DECLARE_METATYPE(VideoCase)

// Huddles end to end: NativeHuddles in one process, each with its own
// person and service client, joined through the local workspace, with
// GStreamer's real webrtcbin and a generated tone as each microphone.
class TestHuddle : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyoneHearsEveryone_data();
    void everyoneHearsEveryone();
    void videoReachesTheOther_data();
    void videoReachesTheOther();
    void joiningElsewhereEndsThisHuddle();
    void withoutMicrophoneJoinsMuted();

private:
    HuddleTestTeam team;
    QString room;
    const NativeHuddleMedia media { .testSources = true, .playAudio = false };
};

void TestHuddle::initTestCase()
{
    QVERIFY2(NativeHuddleMedia::missingPlugin().isEmpty(), qPrintable(NativeHuddleMedia::missingPlugin()));
    const QString error
        = team.start({ u"maren@halvard.example"_s, u"tomas@halvard.example"_s, u"priya@halvard.example"_s });
    QVERIFY2(error.isEmpty(), qPrintable(error));
    room = team.roomNamed(u"sales"_s);
    QVERIFY(!room.isEmpty());
}

void TestHuddle::everyoneHearsEveryone_data()
{
    QTest::addColumn<int>("people");
    QTest::addColumn<Fault>("fault");
    QTest::addRow("two") << 2 << Fault::None;
    QTest::addRow("three") << 3 << Fault::None;
    QTest::addRow("two joining at the same instant") << 2 << Fault::SameInstant;
    QTest::addRow("two, the first signal lost") << 2 << Fault::FirstSignal;
    QTest::addRow("two, polls failing for a while") << 2 << Fault::Polls;
    QTest::addRow("two, the workspace restarted") << 2 << Fault::Restart;
}

void TestHuddle::everyoneHearsEveryone()
{
    QFETCH(int, people);
    QFETCH(Fault, fault);
    const QString huddlePath = u"/api/rooms/"_s + room + u"/huddle/"_s;
    if (fault == Fault::FirstSignal)
        team.workspace->setFault({ { u"method"_s, u"POST"_s }, { u"path"_s, QString(huddlePath + u"signal"_s) },
            { u"status"_s, 503 }, { u"times"_s, 1 } });

    team.workspace->clearRequests();
    std::vector<std::unique_ptr<NativeHuddle>> huddles;
    std::vector<QCoro::Task<>> joins;
    for (int i = 0; i < people; ++i) {
        huddles.push_back(std::make_unique<NativeHuddle>(media));
        joins.push_back(huddles.back()->join(room, *team.members[size_t(i)].api));
        if (fault != Fault::SameInstant)
            tarnWaitFor(std::move(joins.back()));
    }
    if (fault == Fault::SameInstant) {
        for (QCoro::Task<> &join : joins)
            tarnWaitFor(std::move(join));
    }
    const auto everyoneHears = [&] {
        for (int i = 0; i < people; ++i) {
            for (int j = 0; j < people; ++j) {
                if (i != j && huddles[size_t(i)]->decodedAudioFrom(team.members[size_t(j)].id) == 0)
                    return false;
            }
        }
        return true;
    };
    QVERIFY2(waitUntil(everyoneHears), "decoded audio did not arrive from every other participant");
    // Exactly one offer per pair, however the joins interleaved.
    if (fault == Fault::None || fault == Fault::SameInstant) {
        const QJsonArray requests = team.workspace->requests();
        const auto offers = std::count_if(requests.begin(), requests.end(), [](const QJsonValue &request) {
            return request[u"path"_s].toString().endsWith("/huddle/signal"_L1)
                && request[u"body"_s].toString().endsWith(R"("type":"offer"})"_L1);
        });
        QCOMPARE(offers, people * (people - 1) / 2);
    }
    // Maren's id sorts first: hers was the offer that failed, and was sent again.
    if (fault == Fault::FirstSignal)
        QCOMPARE(huddles[0]->notice(), u"Call signaling to Tomas Reyes failed. Reconnecting."_s);

    if (fault == Fault::Polls) {
        NativeHuddle &first = *huddles[0];
        team.workspace->setFault({ { u"method"_s, u"POST"_s }, { u"path"_s, QString(huddlePath + u"poll"_s) },
            { u"status"_s, 503 }, { u"times"_s, 3 } });
        // A change wakes the held polls; the next ones fail.
        tarnWaitFor(huddles[1]->toggleMute());
        QVERIFY(waitUntil([&] { return first.status() == u"Reconnecting"_s; }));
        QVERIFY(waitUntil([&] { return first.status() == u"Live"_s; }));
        const qint64 before = first.decodedAudioFrom(team.members[1].id);
        QVERIFY(waitUntil([&] { return first.decodedAudioFrom(team.members[1].id) > before; }, 5'000));
        tarnWaitFor(huddles[1]->toggleMute());
    }

    if (fault == Fault::Restart) {
        NativeHuddle &first = *huddles[0];
        team.workspace->halt();
        QVERIFY(waitUntil([&] { return first.status() == u"Reconnecting"_s; }));
        // The media does not go through the service.
        const qint64 before = first.decodedAudioFrom(team.members[1].id);
        QVERIFY(waitUntil([&] { return first.decodedAudioFrom(team.members[1].id) > before + 50; }));
        QVERIFY2(team.workspace->restart(), qPrintable(team.workspace->error()));
        QVERIFY(waitUntil([&] { return first.status() == u"Live"_s && huddles[1]->status() == u"Live"_s; }));
    }

    // Muting is seen by the others in the state.
    tarnWaitFor(huddles.back()->toggleMute());
    QVERIFY(huddles.back()->muted());
    const QString mutedID = team.members[size_t(people - 1)].id;
    for (int i = 0; i < people - 1; ++i)
        QVERIFY(waitUntil([&] { return mutedIn(*huddles[size_t(i)], mutedID); }));

    for (const auto &huddle : huddles) {
        tarnWaitFor(huddle->leave());
        QVERIFY(!huddle->running());
        QVERIFY(huddle->endedReason().isEmpty());
    }
    team.workspace->clearFaults();
}

void TestHuddle::videoReachesTheOther_data()
{
    QTest::addColumn<VideoCase>("row");
    QTest::addRow("camera of the offering side") << VideoCase { 2, 0, false, { 640, 360 } };
    QTest::addRow("camera of the answering side") << VideoCase { 2, 1, false, { 640, 360 } };
    QTest::addRow("screen of the answering side") << VideoCase { 2, 1, true, { 1280, 720 } };
    // One encoder feeding two connections, one it offers on and one it answers on.
    QTest::addRow("camera of the middle one of three") << VideoCase { 3, 1, false, { 640, 360 } };
}

void TestHuddle::videoReachesTheOther()
{
    QFETCH(VideoCase, row);
    std::vector<std::unique_ptr<NativeHuddle>> huddles;
    for (size_t i = 0; i < size_t(row.people); ++i) {
        huddles.push_back(std::make_unique<NativeHuddle>(media));
        tarnWaitFor(huddles.back()->join(room, *team.members[i].api));
    }
    NativeHuddle &sender = *huddles[size_t(row.sender)];
    const QString senderID = team.members[size_t(row.sender)].id;
    std::vector<NativeHuddle *> receivers;
    for (const auto &huddle : huddles) {
        if (huddle.get() != &sender)
            receivers.push_back(huddle.get());
    }
    const auto allHear = [&](const std::vector<qint64> &before) {
        for (size_t i = 0; i < receivers.size(); ++i) {
            if (receivers[i]->decodedAudioFrom(senderID) <= before[i] + 10)
                return false;
        }
        return true;
    };
    const auto heard = [&] {
        std::vector<qint64> now;
        for (NativeHuddle *receiver : receivers)
            now.push_back(receiver->decodedAudioFrom(senderID));
        return now;
    };
    QVERIFY(waitUntil([&] { return allHear(std::vector<qint64>(receivers.size(), 0)); }));

    // Turned on mid-call: the running connections are renegotiated, not replaced.
    tarnWaitFor(row.screen ? sender.toggleScreen() : sender.toggleCamera());
    QVERIFY(row.screen ? sender.screenOn() : sender.cameraOn());
    const std::vector<qint64> audioBefore = heard();
    for (NativeHuddle *receiver : receivers) {
        QVERIFY(waitUntil([&] {
            const std::optional<TarnHuddleParticipant> p = personIn(*receiver, senderID);
            return p && (row.screen ? p->screen : p->video);
        }));
        const QString conn = personIn(*receiver, senderID)->conn;
        NativeHuddleTrack *track = receiver->videoTrack(conn, row.screen);
        QVERIFY(track);
        QVERIFY2(waitUntil([&] { return track->frames() > 10; }), "no decoded video frames arrived");
        QCOMPARE(track->frameSize(), row.size);
        QCOMPARE(receiver->videoTrack(conn, !row.screen)->frames(), 0);
        // The same connection carried on.
        QCOMPARE(receiver->videoTrack(conn, row.screen), track);
    }
    // Its audio never stopped.
    QVERIFY(allHear(audioBefore));

    tarnWaitFor(row.screen ? sender.toggleScreen() : sender.toggleCamera());
    for (NativeHuddle *receiver : receivers) {
        QVERIFY(waitUntil([&] {
            const std::optional<TarnHuddleParticipant> p = personIn(*receiver, senderID);
            return p && !p->video && !p->screen;
        }));
    }
    const std::vector<qint64> audioAfter = heard();
    QVERIFY(waitUntil([&] { return allHear(audioAfter); }));
    for (const auto &huddle : huddles)
        tarnWaitFor(huddle->leave());
}

void TestHuddle::joiningElsewhereEndsThisHuddle()
{
    NativeHuddle here(media);
    NativeHuddle elsewhere(media);
    tarnWaitFor(here.join(room, *team.members[0].api));
    QVERIFY(here.running());
    tarnWaitFor(elsewhere.join(room, *team.members[0].api));
    QVERIFY(waitUntil([&] { return !here.running(); }));
    QCOMPARE(here.endedReason(), u"You are no longer in this huddle."_s);
    QVERIFY(elsewhere.running());
    tarnWaitFor(elsewhere.leave());
}

void TestHuddle::withoutMicrophoneJoinsMuted()
{
    if (NativeHuddleMedia::hasMicrophone())
        QSKIP("this machine has a microphone");
    NativeHuddle silent({ .testSources = false, .playAudio = false });
    NativeHuddle speaking(media);
    tarnWaitFor(silent.join(room, *team.members[0].api));
    QVERIFY(silent.muted());
    QCOMPARE(silent.notice(), u"No microphone is available, so you joined muted."_s);
    // Nor a camera, nor a screen to capture: the huddle runs on without them.
    if (NativeHuddleMedia::findCamera() == NativeHuddleMedia::Camera::Missing) {
        tarnWaitFor(silent.toggleCamera());
        QVERIFY(!silent.cameraOn() && !silent.cameraChanging());
        QCOMPARE(silent.notice(), u"No camera is available."_s);
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        tarnWaitFor(silent.toggleScreen());
        QVERIFY(!silent.screenOn() && silent.notice().startsWith("Screen sharing could not start: "_L1));
    }
    tarnWaitFor(speaking.join(room, *team.members[1].api));
    QVERIFY(waitUntil([&] { return mutedIn(speaking, team.members[0].id); }));
    // Both connections are up: the silent side hears the other and sends silence.
    QVERIFY(waitUntil([&] {
        return silent.decodedAudioFrom(team.members[1].id) > 0 && speaking.decodedAudioFrom(team.members[0].id) > 0;
    }));
    tarnWaitFor(speaking.leave());
    tarnWaitFor(silent.leave());
}

QTEST_GUILESS_MAIN(TestHuddle)
#include "tst_huddle.moc"
