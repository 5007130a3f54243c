#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/company/TarnCompanyCalls.h"
#include "support/FailureOf.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;
const QString priya = u"priya@halvard.example"_s;
const QString ada = u"ada@halvard.example"_s;

enum class Call { Sops, Thoughts, CreateMember, UpdateAccess, Decide };

struct AccessRow {
    QString who;
    Call call;
    QString refusal; // empty: allowed
};

struct DraftRow {
    TarnTeamMemberDraft draft;
    QString refusal;
};

} // namespace

Q_DECLARE_METATYPE(AccessRow)
Q_DECLARE_METATYPE(DraftRow)

// The company screen's endpoints against the local workspace and its demo.
class TestCompanyCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void access_data();
    void access();
    void appsChangeOnTheNextSessionRefresh();
    void newMembers_data();
    void newMembers();
    void searchShowsAppsToOwnersOnly();
    void rename();
    void readMarksArePersonal();
    void decisions();

private:
    [[nodiscard]] TarnThoughtPost waitingPost();

    InboxTestClient client;
};

void TestCompanyCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

TarnThoughtPost TestCompanyCalls::waitingPost()
{
    const QList<TarnThoughtPost> board = tarnWaitFor(TarnCompanyCalls::thoughtBoard(client.as(maren)));
    const auto at = std::find_if(
        board.begin(), board.end(), [](const TarnThoughtPost &post) { return !post.decision.has_value(); });
    return at == board.end() ? TarnThoughtPost() : *at;
}

void TestCompanyCalls::access_data()
{
    const QString team = u"Only the company's owner manages the team."_s;
    QTest::addColumn<AccessRow>("row");
    QTest::addRow("owner reads the handbook") << AccessRow { maren, Call::Sops, {} };
    QTest::addRow("Docs reads the handbook") << AccessRow { ada, Call::Sops, {} };
    QTest::addRow("no Docs, no handbook")
        << AccessRow { u"jonah@halvard.example"_s, Call::Sops, u"The handbook is not open to you."_s };
    QTest::addRow("Overview reads the board") << AccessRow { tomas, Call::Thoughts, {} };
    QTest::addRow("no Overview, no board")
        << AccessRow { priya, Call::Thoughts, u"The thought board is not open to you."_s };
    QTest::addRow("manager adds no one") << AccessRow { tomas, Call::CreateMember, team };
    QTest::addRow("manager changes no apps") << AccessRow { tomas, Call::UpdateAccess, team };
    QTest::addRow("manager decides nothing") << AccessRow { tomas, Call::Decide, team };
}

void TestCompanyCalls::access()
{
    QFETCH(AccessRow, row);
    TarnAPI &api = client.as(row.who);
    QString failure;
    switch (row.call) {
    case Call::Sops: {
        failure = failureOf(TarnCompanyCalls::companySops(api));
        if (failure.isEmpty())
            QVERIFY(tarnWaitFor(TarnCompanyCalls::companySops(api)).size() >= 10);
        break;
    }
    case Call::Thoughts:
        failure = failureOf(TarnCompanyCalls::thoughtBoard(api));
        break;
    case Call::CreateMember:
        failure = failureOf(TarnCompanyCalls::createTeamMember(
            api, TarnTeamMemberDraft { u"Lee Park"_s, u"lee@halvard.example"_s, {}, { u"Home"_s } }));
        break;
    case Call::UpdateAccess:
        failure = failureOf(TarnCompanyCalls::updateTeamAccess(api, u"p-ada"_s, TarnTeamAccess { { u"Books"_s } }));
        break;
    case Call::Decide: {
        const TarnThoughtPost post = waitingPost();
        failure = failureOf(TarnCompanyCalls::decidePost(api, post.id, TarnPostDecision { u"adopt"_s, post.version }));
        break;
    }
    }
    QCOMPARE(failure, row.refusal);
}

void TestCompanyCalls::appsChangeOnTheNextSessionRefresh()
{
    TarnAPI &owner = client.as(maren);
    TarnAPI &member = client.as(priya);
    const TarnSession before = tarnWaitFor(member.refreshSession());
    QVERIFY(!before.apps.contains(u"Overview"_s));
    QVERIFY(!failureOf(TarnCompanyCalls::thoughtBoard(member)).isEmpty());

    QStringList more = before.apps;
    more.append(u"Overview"_s);
    (void)tarnWaitFor(TarnCompanyCalls::updateTeamAccess(owner, u"p-priya"_s, TarnTeamAccess { more }));
    const TarnSession widened = tarnWaitFor(member.refreshSession());
    QCOMPARE(widened.apps, more);
    QVERIFY(!tarnWaitFor(TarnCompanyCalls::thoughtBoard(member)).isEmpty());

    (void)tarnWaitFor(TarnCompanyCalls::updateTeamAccess(owner, u"p-priya"_s, TarnTeamAccess { before.apps }));
    QCOMPARE(tarnWaitFor(member.refreshSession()).apps, before.apps);
    QVERIFY(!failureOf(TarnCompanyCalls::thoughtBoard(member)).isEmpty());

    QCOMPARE(failureOf(TarnCompanyCalls::updateTeamAccess(owner, u"p-priya"_s, TarnTeamAccess { { u"Fax"_s } }))
                 .section(u':', 0, 0),
        u"Apps are chosen from"_s);
    QCOMPARE(failureOf(TarnCompanyCalls::updateTeamAccess(owner, u"p-maren"_s, TarnTeamAccess {})),
        u"The owner always has every app."_s);
    QCOMPARE(
        failureOf(TarnCompanyCalls::updateTeamAccess(owner, u"p-nobody"_s, TarnTeamAccess {})), u"No such person."_s);
}

void TestCompanyCalls::newMembers_data()
{
    QTest::addColumn<DraftRow>("row");
    QTest::addRow("added") << DraftRow {
        { u"  Lee   Park "_s, u"Lee@Halvard.example"_s, u"intern"_s, { u"Home"_s, u"Mail"_s, u"Home"_s } }, {}
    };
    QTest::addRow("no name") << DraftRow { { u"  "_s, u"x@halvard.example"_s, {}, {} }, u"A name cannot be empty."_s };
    QTest::addRow("long name") << DraftRow { { QString(81, u'a'), u"x@halvard.example"_s, {}, {} },
        u"A name is at most 80 characters."_s };
    QTest::addRow("no address") << DraftRow { { u"Lee"_s, u"lee.example"_s, {}, {} },
        u"That is not an email address."_s };
    QTest::addRow("address taken") << DraftRow { { u"Tomas Two"_s, u"TOMAS@halvard.example"_s, {}, {} },
        u"Someone on the team already signs in with that address."_s };
}

void TestCompanyCalls::newMembers()
{
    QFETCH(DraftRow, row);
    TarnAPI &owner = client.as(maren);
    if (!row.refusal.isEmpty()) {
        QCOMPARE(failureOf(TarnCompanyCalls::createTeamMember(owner, row.draft)), row.refusal);
        return;
    }
    const TarnCreatedID made = tarnWaitFor(TarnCompanyCalls::createTeamMember(owner, row.draft));
    const QList<TarnTeamMember> found = tarnWaitFor(TarnCompanyCalls::peopleSearch(owner, u"park"_s));
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first(),
        (TarnTeamMember { made.id, u"Lee Park"_s, u"lee@halvard.example"_s, u"intern"_s, false,
            QStringList { u"Home"_s, u"Mail"_s } }));
    // The new person signs in and their session carries what the owner chose.
    const TarnSession session = tarnWaitFor(client.as(u"lee@halvard.example"_s).refreshSession());
    QCOMPARE(session.apps, (QStringList { u"Home"_s, u"Mail"_s }));
}

void TestCompanyCalls::searchShowsAppsToOwnersOnly()
{
    const QList<TarnTeamMember> asOwner = tarnWaitFor(TarnCompanyCalls::peopleSearch(client.as(maren), u"NAIR"_s));
    QCOMPARE(asOwner.size(), 1);
    QVERIFY(asOwner.first().apps.has_value());
    const QList<TarnTeamMember> asMember = tarnWaitFor(TarnCompanyCalls::peopleSearch(client.as(ada), u"nair"_s));
    QCOMPARE(asMember.size(), 1);
    QCOMPARE(asMember.first().name, u"Priya Nair"_s);
    QVERIFY(!asMember.first().apps.has_value());
    QVERIFY(tarnWaitFor(TarnCompanyCalls::peopleSearch(client.as(ada), u"support"_s)).size() >= 1);
    QVERIFY(tarnWaitFor(TarnCompanyCalls::peopleSearch(client.as(ada), QString())).size() >= 6);
}

void TestCompanyCalls::rename()
{
    TarnAPI &api = client.as(ada);
    QCOMPARE(
        failureOf(TarnCompanyCalls::renameMyAccount(api, TarnAccountRename { u" "_s })), u"A name cannot be empty."_s);
    (void)tarnWaitFor(TarnCompanyCalls::renameMyAccount(api, TarnAccountRename { u" Ada  Lind "_s }));
    QCOMPARE(tarnWaitFor(api.refreshSession()).name, u"Ada Lind"_s);
    (void)tarnWaitFor(TarnCompanyCalls::renameMyAccount(api, TarnAccountRename { u"Ada Lindqvist"_s }));
}

void TestCompanyCalls::readMarksArePersonal()
{
    const TarnThoughtPost post = waitingPost();
    const auto readBy = [&](const QString &who) {
        const QList<TarnThoughtPost> board = tarnWaitFor(TarnCompanyCalls::thoughtBoard(client.as(who)));
        const auto at
            = std::find_if(board.begin(), board.end(), [&post](const TarnThoughtPost &p) { return p.id == post.id; });
        return at != board.end() && at->read;
    };
    const bool ownerRead = readBy(maren);
    QVERIFY(!readBy(tomas) || post.author_name == u"Tomas Reyes"_s);
    (void)tarnWaitFor(TarnCompanyCalls::markPostRead(client.as(tomas), post.id));
    QVERIFY(readBy(tomas));
    QCOMPARE(readBy(maren), ownerRead);
    QCOMPARE(failureOf(TarnCompanyCalls::markPostRead(client.as(tomas), u"post-nothing"_s)), u"No such post."_s);
}

void TestCompanyCalls::decisions()
{
    TarnAPI &owner = client.as(maren);
    const TarnThoughtPost post = waitingPost();
    QVERIFY(!post.id.isEmpty());
    QCOMPARE(failureOf(TarnCompanyCalls::decidePost(owner, post.id, TarnPostDecision { u"maybe"_s, post.version })),
        u"A decision is one of: adopt, later, decline."_s);

    const TarnThoughtPost decided
        = tarnWaitFor(TarnCompanyCalls::decidePost(owner, post.id, TarnPostDecision { u"later"_s, post.version }));
    QCOMPARE(decided.decision, u"later"_s);
    QCOMPARE(decided.decided_by_name, u"Maren Holt"_s);
    QCOMPARE(decided.version, post.version + 1);
    QVERIFY(decided.read);

    // A decision based on the post before that one is refused with who decided.
    QCOMPARE(failureOf(TarnCompanyCalls::decidePost(owner, post.id, TarnPostDecision { u"adopt"_s, post.version })),
        u"Maren Holt decided this post in the meantime; it now shows their decision."_s);
}

QTEST_GUILESS_MAIN(TestCompanyCalls)
#include "tst_companycalls.moc"
