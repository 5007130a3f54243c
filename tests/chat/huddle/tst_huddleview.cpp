#include "TarnWaitFor.h"
#include "chat/huddle/HuddleTestTeam.h"
#include "chat/huddle/NativeHuddleView.h"

#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// Runs the event loop until `done` holds, looking again at every change the
// view reports.
bool waitUntil(NativeHuddleView &view, const std::function<bool()> &done)
{
    QSignalSpy changes(&view, &NativeHuddleView::changed);
    const QDeadlineTimer deadline(15'000);
    while (!done() && !deadline.hasExpired())
        (void)changes.wait(200);
    return done();
}

// The participants' rows as "name" or "name (muted)", in order.
QStringList rowsOf(NativeHuddleView &view)
{
    QStringList rows;
    QAbstractItemModel &model = *view.participants();
    const QHash<int, QByteArray> roles = model.roleNames();
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex at = model.index(row, 0);
        const QString name = model.data(at, roles.key("name")).toString();
        rows.append(model.data(at, roles.key("muted")).toBool() ? name + u" (muted)"_s : name);
    }
    rows.sort();
    return rows;
}

} // namespace

// The window's huddle as its bar and room header see it, with two people
// signed in on their own clients and generated tones for microphones.
class TestHuddleView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void followsTheHuddle_data();
    void followsTheHuddle();

private:
    HuddleTestTeam team;
    const NativeHuddleMedia media { .testSources = true, .playAudio = false };
};

void TestHuddleView::initTestCase()
{
    QVERIFY2(NativeHuddleMedia::missingPlugin().isEmpty(), qPrintable(NativeHuddleMedia::missingPlugin()));
    const QString error = team.start({ u"maren@halvard.example"_s, u"tomas@halvard.example"_s });
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestHuddleView::followsTheHuddle_data()
{
    QTest::addColumn<bool>("otherMutes");
    QTest::addColumn<bool>("leaveBySignOut");
    QTest::addRow("both speaking, left with Leave") << false << false;
    QTest::addRow("the other muted, left by signing out") << true << true;
}

void TestHuddleView::followsTheHuddle()
{
    QFETCH(bool, otherMutes);
    QFETCH(bool, leaveBySignOut);
    const QString sales = team.roomNamed(u"sales"_s);
    const QString general = team.roomNamed(u"general"_s);
    NativeHuddleView mine(*team.members[0].api, media);
    NativeHuddleView theirs(*team.members[1].api, media);

    mine.join(sales);
    QVERIFY(waitUntil(mine, [&] { return mine.status() == u"Live"_s; }));
    QVERIFY(mine.running());
    QCOMPARE(mine.roomID(), sales);
    QCOMPARE(mine.roomName(), u"sales"_s);
    QCOMPARE(rowsOf(mine), QStringList { u"Maren Holt"_s });

    // The other side sees the room's huddle as live before joining it.
    QSignalSpy live(&theirs, &NativeHuddleView::liveRoomsChanged);
    theirs.refreshVisible();
    QVERIFY(live.wait());
    QCOMPARE(theirs.liveRooms(), QStringList { sales });

    theirs.join(sales);
    QVERIFY(waitUntil(theirs, [&] { return theirs.status() == u"Live"_s; }));
    QVERIFY(waitUntil(mine, [&] { return rowsOf(mine).size() == 2; }));
    if (otherMutes) {
        theirs.toggleMute();
        QVERIFY(waitUntil(mine, [&] { return rowsOf(mine).contains(u"Tomas Reyes (muted)"_s); }));
        QVERIFY(theirs.muted());
    }

    // One huddle at a time: joining another room's leaves this one.
    mine.join(general);
    QVERIFY(waitUntil(mine, [&] { return mine.roomID() == general && mine.status() == u"Live"_s; }));
    QCOMPARE(rowsOf(mine), QStringList { u"Maren Holt"_s });
    QVERIFY(waitUntil(theirs, [&] { return rowsOf(theirs).size() == 1; }));

    if (leaveBySignOut)
        mine.clear();
    else
        mine.leave();
    QVERIFY(!mine.running());
    QCOMPARE(rowsOf(mine), QStringList());
    theirs.leave();
    QVERIFY(!theirs.running());
    // Leaving reaches the service: the huddles end.
    QVERIFY(waitUntil(mine, [&] {
        mine.refreshVisible();
        return mine.liveRooms().isEmpty();
    }));
}

QTEST_GUILESS_MAIN(TestHuddleView)
#include "tst_huddleview.moc"
