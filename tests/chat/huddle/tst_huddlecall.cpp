#include "chat/huddle/HuddleCall.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Kind = HuddleCommand::Kind;

TarnHuddleParticipant person(const QString &id, const QString &conn)
{
    return { .user_id = id, .name = u"Name of "_s + id, .conn = conn };
}

TarnHuddleState stateWith(const QList<TarnHuddleParticipant> &people, qint64 version = 1)
{
    return { .active = true, .version = version, .participants = people, .joined = true };
}

TarnHuddleSignal signal(qint64 seq, const QString &type, const TarnHuddleSignalData &data)
{
    return { .seq = seq, .from = u"p-b"_s, .from_conn = u"cb"_s, .type = type, .data = data };
}

TarnHuddleSignalData described(const QString &type)
{
    return { .description = TarnHuddleDescription { type, u"sdp-"_s + type } };
}

TarnHuddleSignalData candidates(const QStringList &texts)
{
    QList<TarnHuddleCandidate> list;
    for (const QString &text : texts)
        list.append({ .candidate = text });
    return { .candidates = list };
}

// A call as `me` joined with p-b (on "cb") in it.
HuddleCall joinedWithB(const QString &me)
{
    HuddleCall call;
    (void)call.begin(u"room"_s, me);
    (void)call.joined({ .sid = u"s"_s,
        .conn = u"c-me"_s,
        .state = stateWith({ person(me, u"c-me"_s), person(u"p-b"_s, u"cb"_s) }),
        .ice_servers = {} });
    return call;
}

TarnHuddleSignalData withFragment(const QString &type, const QString &ufrag)
{
    return { .description = TarnHuddleDescription { type, u"v=0\r\na=ice-ufrag:"_s + ufrag + u"\r\n"_s } };
}

// What happens on a connection, from p-a (which offers to p-b) or p-c (which p-b offers to).
enum class Event { TrackAdded, TrackAddedMidOffer, CameraMarked, OfferAgain, OfferFresh, BothReopen, PeerFailed };

struct Renegotiation {
    QString me;
    Event event;
    QList<Kind> commands;
};

QList<Kind> kinds(const QList<HuddleCommand> &commands)
{
    QList<Kind> out;
    for (const HuddleCommand &c : commands)
        out.append(c.kind);
    return out;
}

// The candidates applied, in order.
QStringList added(const QList<HuddleCommand> &commands)
{
    QStringList out;
    for (const HuddleCommand &c : commands) {
        if (c.kind == Kind::AddCandidate)
            out.append(c.candidate.candidate);
    }
    return out;
}

} // namespace

Q_DECLARE_METATYPE(Renegotiation)

class TestHuddleCall : public QObject {
    Q_OBJECT

private slots:
    void whoOffers_data();
    void whoOffers();
    void candidatesWaitForTheRemoteDescription_data();
    void candidatesWaitForTheRemoteDescription();
    void signalsAreHandledInSeqOrderAboveAfter();
    void localCandidatesGoOutInBatchesAfterTheDescription();
    void notJoinedEndsTheHuddle_data();
    void notJoinedEndsTheHuddle();
    void statusFollowsThePolls();
    void peersFollowTheState();
    void runningConnectionsRenegotiate_data();
    void runningConnectionsRenegotiate();
    void fragmentOfAnSdp();
};

void TestHuddleCall::whoOffers_data()
{
    QTest::addColumn<QString>("me");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QList<Kind>>("opening");
    const QList<Kind> offering { Kind::OpenPeer, Kind::MakeOffer };
    const QList<Kind> waiting { Kind::OpenPeer };
    QTest::addRow("ordered") << u"p-a"_s << u"p-b"_s << offering;
    QTest::addRow("reversed") << u"p-c"_s << u"p-b"_s << waiting;
    // Plain string order: capitals sort before lower case, and no locale applies.
    QTest::addRow("code units, not locale") << u"P-z"_s << u"p-b"_s << offering;
    QTest::addRow("prefix sorts first") << u"p-b"_s << u"p-bb"_s << offering;
    // The same person on another connection never offers to itself.
    QTest::addRow("equal") << u"p-b"_s << u"p-b"_s << QList<Kind> {};
}

void TestHuddleCall::whoOffers()
{
    QFETCH(QString, me);
    QFETCH(QString, other);
    QFETCH(QList<Kind>, opening);
    HuddleCall call;
    (void)call.begin(u"room"_s, me);
    const QList<HuddleCommand> commands = call.joined(
        { .sid = u"s"_s, .conn = u"c1"_s, .state = stateWith({ person(me, u"c1"_s), person(other, u"c2"_s) }) });
    QCOMPARE(kinds(commands), opening);
    // Seen from the other side, exactly one of the two offers (or neither, for equal ids).
    QCOMPARE(int(HuddleCall::offers(me, other)) + int(HuddleCall::offers(other, me)), me == other ? 0 : 1);
}

void TestHuddleCall::candidatesWaitForTheRemoteDescription_data()
{
    QTest::addColumn<QString>("me");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QList<Kind>>("afterDescription");
    // p-a offers to p-b and receives the answer; p-c is offered to by p-b and answers.
    QTest::addRow("answer to our offer") << u"p-a"_s << u"answer"_s
                                         << QList<Kind> { Kind::SetRemote, Kind::AddCandidate, Kind::AddCandidate,
                                                Kind::AddCandidate };
    QTest::addRow("offer we answer") << u"p-c"_s << u"offer"_s
                                     << QList<Kind> { Kind::SetRemote, Kind::AddCandidate, Kind::AddCandidate,
                                            Kind::AddCandidate, Kind::MakeAnswer };
}

void TestHuddleCall::candidatesWaitForTheRemoteDescription()
{
    QFETCH(QString, me);
    QFETCH(QString, description);
    QFETCH(QList<Kind>, afterDescription);
    HuddleCall call = joinedWithB(me);
    // Two batches before the description (delivered by separate polls), one after.
    QVERIFY(call.handle({ signal(1, u"ice"_s, candidates({ u"c1"_s, u"c2"_s })) }).isEmpty());
    QVERIFY(call.handle({ signal(2, u"ice"_s, candidates({ u"c3"_s })) }).isEmpty());
    QCOMPARE(call.peer(u"p-b"_s)->pending.size(), 3);
    const QList<HuddleCommand> applied = call.handle({ signal(3, description, described(description)) });
    QCOMPARE(kinds(applied), afterDescription);
    QCOMPARE(added(applied), (QStringList { u"c1"_s, u"c2"_s, u"c3"_s }));
    const QList<HuddleCommand> later = call.handle({ signal(4, u"ice"_s, candidates({ u"c4"_s })) });
    QCOMPARE(added(later), QStringList { u"c4"_s });
}

void TestHuddleCall::signalsAreHandledInSeqOrderAboveAfter()
{
    HuddleCall call = joinedWithB(u"p-c"_s);
    // Out of order in one answer, then a repeat of what was handled.
    const QList<HuddleCommand> first = call.handle({ signal(7, u"ice"_s, candidates({ u"late"_s })),
        signal(5, u"offer"_s, described(u"offer"_s)), signal(6, u"ice"_s, candidates({ u"early"_s })) });
    QCOMPARE(added(first), (QStringList { u"early"_s, u"late"_s }));
    QCOMPARE(call.after(), 7);
    const QList<HuddleCommand> again
        = call.handle({ signal(7, u"ice"_s, candidates({ u"late"_s })), signal(5, u"offer"_s, described(u"offer"_s)) });
    QVERIFY(again.isEmpty());
    QCOMPARE(call.after(), 7);
    // A signal from an earlier connection of the same person is skipped too.
    TarnHuddleSignal stale = signal(8, u"ice"_s, candidates({ u"old"_s }));
    stale.from_conn = u"c-old"_s;
    QVERIFY(call.handle({ stale }).isEmpty());
    QCOMPARE(call.after(), 8);
}

void TestHuddleCall::localCandidatesGoOutInBatchesAfterTheDescription()
{
    HuddleCall call = joinedWithB(u"p-a"_s);
    QCOMPARE(call.localCandidate(u"p-b"_s, { .candidate = u"l1"_s }), false);
    QCOMPARE(call.localCandidate(u"p-b"_s, { .candidate = u"l2"_s }), false);
    QVERIFY(call.flushLocalCandidates(u"p-b"_s).isEmpty());

    const QList<HuddleCommand> sent = call.descriptionCreated(u"p-b"_s, { u"offer"_s, u"sdp"_s });
    QCOMPARE(kinds(sent), (QList<Kind> { Kind::Send, Kind::Send }));
    QCOMPARE(sent[0].type, u"offer"_s);
    QCOMPARE(sent[1].type, u"ice"_s);
    QCOMPARE(sent[1].data.candidates->size(), 2);

    QCOMPARE(call.localCandidate(u"p-b"_s, { .candidate = u"l3"_s }), true);
    QCOMPARE(call.localCandidate(u"p-b"_s, { .candidate = u"l4"_s }), true);
    const QList<HuddleCommand> batch = call.flushLocalCandidates(u"p-b"_s);
    QCOMPARE(batch.size(), 1);
    QCOMPARE(batch[0].data.candidates->at(1).candidate, u"l4"_s);
    QVERIFY(call.flushLocalCandidates(u"p-b"_s).isEmpty());
}

void TestHuddleCall::notJoinedEndsTheHuddle_data()
{
    QTest::addColumn<bool>("active");
    QTest::addColumn<QString>("reason");
    QTest::addRow("taken out of a running huddle") << true << u"You are no longer in this huddle."_s;
    QTest::addRow("huddle over") << false << u"The huddle has ended."_s;
}

void TestHuddleCall::notJoinedEndsTheHuddle()
{
    QFETCH(bool, active);
    QFETCH(QString, reason);
    HuddleCall call = joinedWithB(u"p-a"_s);
    const quint64 generation = call.generation();
    const QList<HuddleCommand> ended = call.polled({ .joined = false,
        .signals_ = { signal(1, u"answer"_s, described(u"answer"_s)) },
        .state = { .active = active } });
    QCOMPARE(kinds(ended), QList<Kind> { Kind::ClosePeer });
    QCOMPARE(call.endedReason(), reason);
    // The loop that asked stops on its next pass.
    QVERIFY(!call.isCurrent(generation));
    QVERIFY(!call.isRunning());
}

void TestHuddleCall::statusFollowsThePolls()
{
    HuddleCall call;
    const quint64 first = call.begin(u"room"_s, u"p-a"_s);
    QCOMPARE(call.status(), u"Connecting"_s);
    (void)call.joined({ .sid = u"s"_s, .conn = u"c"_s, .state = stateWith({ person(u"p-a"_s, u"c"_s) }, 4) });
    QCOMPARE(call.status(), u"Live"_s);
    call.pollFailed();
    QCOMPARE(call.status(), u"Reconnecting"_s);
    (void)call.polled({ .joined = true, .state = stateWith({ person(u"p-a"_s, u"c"_s) }, 6) });
    QCOMPARE(call.status(), u"Live"_s);
    QCOMPARE(call.version(), 6);
    // Leaving and joining again: the earlier join's loop is stale.
    (void)call.leave();
    QVERIFY(!call.endedReason());
    const quint64 second = call.begin(u"room"_s, u"p-a"_s);
    QVERIFY(call.isCurrent(second));
    QVERIFY(!call.isCurrent(first));
}

void TestHuddleCall::peersFollowTheState()
{
    HuddleCall call = joinedWithB(u"p-a"_s);
    // p-b rejoined on a new connection and p-c arrived with camera and
    // screen on: p-b's peer is replaced and p-c gets one, offered to by p-a
    // with room for both of p-c's tracks in the first offer.
    TarnHuddleParticipant c = person(u"p-c"_s, u"cc"_s);
    c.video = c.screen = true;
    const QList<HuddleCommand> changed
        = call.apply(stateWith({ person(u"p-a"_s, u"c-me"_s), person(u"p-b"_s, u"cb2"_s), c }, 2));
    QCOMPARE(kinds(changed),
        (QList<Kind> { Kind::ClosePeer, Kind::OpenPeer, Kind::MakeOffer, Kind::OpenPeer, Kind::Receive, Kind::Receive,
            Kind::MakeOffer }));
    QCOMPARE(changed[4].track, HuddleCommand::Track::Camera);
    QCOMPARE(changed[5].track, HuddleCommand::Track::Screen);
    QCOMPARE(call.peer(u"p-b"_s)->conn, u"cb2"_s);
    const QList<HuddleCommand> left
        = call.apply(stateWith({ person(u"p-a"_s, u"c-me"_s), person(u"p-c"_s, u"cc"_s) }, 3));
    QCOMPARE(kinds(left), QList<Kind> { Kind::ClosePeer });
    QCOMPARE(left.first().peer, u"p-b"_s);
}

void TestHuddleCall::runningConnectionsRenegotiate_data()
{
    QTest::addColumn<Renegotiation>("row");
    const QList<Kind> answerFresh { Kind::ClosePeer, Kind::OpenPeer, Kind::SetRemote, Kind::MakeAnswer };
    const QList<Renegotiation> rows {
        { u"p-a"_s, Event::TrackAdded, { Kind::MakeOffer } },
        // One offer at a time: the next waits for the answer.
        { u"p-a"_s, Event::TrackAddedMidOffer, { Kind::SetRemote, Kind::MakeOffer } },
        // The answering side's marks make the offering side offer.
        { u"p-c"_s, Event::TrackAdded, {} },
        { u"p-a"_s, Event::CameraMarked, { Kind::Receive, Kind::MakeOffer } },
        { u"p-c"_s, Event::CameraMarked, {} },
        { u"p-c"_s, Event::OfferAgain, { Kind::SetRemote, Kind::MakeAnswer } },
        { u"p-c"_s, Event::OfferFresh, answerFresh },
        // The offering side's connection is gone on the other side.
        { u"p-a"_s, Event::OfferFresh, answerFresh },
        { u"p-a"_s, Event::BothReopen, {} },
        { u"p-c"_s, Event::BothReopen, answerFresh },
        // Whichever side sees a failure offers anew, so nobody waits on the other.
        { u"p-a"_s, Event::PeerFailed, { Kind::ClosePeer, Kind::OpenPeer, Kind::MakeOffer } },
        { u"p-c"_s, Event::PeerFailed, { Kind::ClosePeer, Kind::OpenPeer, Kind::MakeOffer } },
    };
    for (const Renegotiation &row : rows)
        QTest::addRow("%s, event %d", qPrintable(row.me), int(row.event)) << row;
}

void TestHuddleCall::runningConnectionsRenegotiate()
{
    QFETCH(Renegotiation, row);
    HuddleCall call = joinedWithB(row.me);
    const bool offering = row.me == u"p-a"_s;
    const QString settled = offering ? u"answer"_s : u"offer"_s;
    const auto connected = [&] { (void)call.handle({ signal(1, settled, withFragment(settled, u"u1"_s)) }); };
    QList<HuddleCommand> out;
    switch (row.event) {
    case Event::TrackAdded:
        connected();
        out = call.trackAdded(u"p-b"_s);
        break;
    case Event::TrackAddedMidOffer:
        QVERIFY(call.trackAdded(u"p-b"_s).isEmpty());
        out = call.handle({ signal(1, settled, withFragment(settled, u"u1"_s)) });
        break;
    case Event::CameraMarked: {
        connected();
        TarnHuddleParticipant b = person(u"p-b"_s, u"cb"_s);
        b.video = true;
        out = call.apply(stateWith({ person(row.me, u"c-me"_s), b }, 2));
        // Room is made once.
        QVERIFY(call.apply(stateWith({ person(row.me, u"c-me"_s), b }, 3)).isEmpty());
        break;
    }
    case Event::OfferAgain:
    case Event::OfferFresh:
        connected();
        out = call.handle(
            { signal(2, u"offer"_s, withFragment(u"offer"_s, row.event == Event::OfferAgain ? u"u1"_s : u"u2"_s)) });
        break;
    case Event::BothReopen:
        connected();
        (void)call.peerFailed(u"p-b"_s);
        out = call.handle({ signal(2, u"offer"_s, withFragment(u"offer"_s, u"u2"_s)) });
        break;
    case Event::PeerFailed:
        connected();
        out = call.peerFailed(u"p-b"_s);
        QCOMPARE(call.notice(), u"Audio connection to Name of p-b failed; retrying."_s);
        break;
    }
    QCOMPARE(kinds(out), row.commands);
    QVERIFY(call.peer(u"p-b"_s));
}

void TestHuddleCall::fragmentOfAnSdp()
{
    QCOMPARE(HuddleCall::iceUfrag(u"v=0\r\nm=audio 9\r\na=ice-ufrag:Ab+/9\r\na=ice-pwd:x\r\n"_s), u"Ab+/9"_s);
    QCOMPARE(HuddleCall::iceUfrag(u"v=0\na=ice-ufrag:last"_s), u"last"_s);
    QVERIFY(HuddleCall::iceUfrag(u"v=0\r\n"_s).isEmpty());
}

QTEST_GUILESS_MAIN(TestHuddleCall)
#include "tst_huddlecall.moc"
