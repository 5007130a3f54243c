#include "chat/huddle/HuddleTestTeam.h"
#include "chat/huddle/NativeHuddleView.h"

#include <QTest>

using namespace Qt::StringLiterals;

static QStringList rowsOf(NativeHuddleView &view)
{
    QStringList rows;
    for (const TarnHuddleParticipant &p : view.participants()->rows())
        rows.append(p.muted ? p.name + u" (muted)"_s : p.name);
    rows.sort();
    return rows;
}

// The window's huddle for two people on their own clients, with generated tones.
class TestHuddleView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(NativeHuddleMedia::missingPlugin().isEmpty(), qPrintable(NativeHuddleMedia::missingPlugin()));
        const QString error = team.start({ u"maren@halvard.example"_s, u"tomas@halvard.example"_s });
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }
    void followsTheHuddle_data()
    {
        QTest::addColumn<bool>("signOut");
        QTest::addRow("left with Leave, the other speaking") << false;
        QTest::addRow("left by signing out, the other muted") << true;
    }
    void followsTheHuddle();

private:
    HuddleTestTeam team;
};

void TestHuddleView::followsTheHuddle()
{
    QFETCH(bool, signOut);
    const QString sales = team.roomNamed(u"sales"_s), general = team.roomNamed(u"general"_s);
    const NativeHuddleMedia media { .testSources = true, .playAudio = false };
    NativeHuddleView mine(*team.members[0].api, media);
    NativeHuddleView theirs(*team.members[1].api, media);

    mine.join(sales);
    QTRY_COMPARE(mine.status(), u"Live"_s);
    QCOMPARE(mine.roomName(), u"sales"_s);
    QCOMPARE(rowsOf(mine), QStringList { u"Maren Holt"_s });
    // One's own huddle marks its room as soon as it is live.
    QTRY_COMPARE(mine.liveRooms(), QStringList { sales });
    // The other side sees the room's huddle as live before joining it.
    theirs.refreshVisible();
    QTRY_COMPARE(theirs.liveRooms(), QStringList { sales });

    theirs.join(sales);
    // Muted while still connecting: the mark must reach the others all the same.
    if (signOut)
        theirs.toggleMute();
    QTRY_COMPARE(theirs.status(), u"Live"_s);
    QTRY_COMPARE(rowsOf(mine), QStringList({ u"Maren Holt"_s, signOut ? u"Tomas Reyes (muted)"_s : u"Tomas Reyes"_s }));
    // One huddle at a time: joining another room's leaves this one.
    mine.join(general);
    QTRY_VERIFY(mine.roomID() == general && mine.status() == u"Live"_s);
    QCOMPARE(rowsOf(mine), QStringList { u"Maren Holt"_s });
    QTRY_COMPARE(rowsOf(theirs).size(), 1);

    if (signOut)
        mine.clear();
    else
        mine.leave();
    QVERIFY(!mine.running());
    QCOMPARE(rowsOf(mine), QStringList());
    theirs.leave();
}

QTEST_GUILESS_MAIN(TestHuddleView)
#include "tst_huddleview.moc"
