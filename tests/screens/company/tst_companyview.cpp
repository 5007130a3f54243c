#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/company/NativeCompanyView.h"
#include "screens/company/TarnCompanyCalls.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;
const QString jonah = u"jonah@halvard.example"_s;

struct PartsRow {
    QString who;
    bool team;
    bool handbook;
    bool board;
};

} // namespace

Q_DECLARE_METATYPE(PartsRow)

// The company screen's state against the local workspace and its demo.
class TestCompanyView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void partsFollowAccess_data();
    void partsFollowAccess();
    void appGivenReachesTheirNextSession();
    void readMarkShowsAtOnce();
    void refusedDecisionShowsTheCurrentOne();
    void renameAndSearch();

private:
    [[nodiscard]] std::unique_ptr<NativeCompanyView> opened(const QString &who);
    [[nodiscard]] static bool act(NativeCompanyView &view, const std::function<void()> &action);

    InboxTestClient client;
};

void TestCompanyView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeCompanyView> TestCompanyView::opened(const QString &who)
{
    TarnAPI &api = client.as(who);
    (void)tarnWaitFor(api.refreshSession());
    auto view = std::make_unique<NativeCompanyView>(api);
    QSignalSpy loaded(view.get(), &NativeCompanyView::refreshed);
    view->appear();
    // With nothing it may read, the screen has loaded before appear() returns.
    if (loaded.isEmpty() && !loaded.wait())
        return {};
    return view;
}

bool TestCompanyView::act(NativeCompanyView &view, const std::function<void()> &action)
{
    QSignalSpy done(&view, &NativeCompanyView::actionFinished);
    action();
    return !done.isEmpty() || done.wait();
}

void TestCompanyView::partsFollowAccess_data()
{
    QTest::addColumn<PartsRow>("row");
    QTest::addRow("owner") << PartsRow { maren, true, true, true };
    QTest::addRow("manager") << PartsRow { tomas, false, true, true };
    QTest::addRow("designer") << PartsRow { u"sam@halvard.example"_s, false, true, false };
    QTest::addRow("support") << PartsRow { jonah, false, false, false };
}

void TestCompanyView::partsFollowAccess()
{
    QFETCH(PartsRow, row);
    const std::unique_ptr<NativeCompanyView> view = opened(row.who);
    QVERIFY(view);
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->managesTeam(), row.team);
    QCOMPARE(view->team()->rowCount() >= 6, row.team);
    QCOMPARE(view->sops()->rowCount() >= 10, row.handbook);
    QCOMPARE(view->thoughts()->rowCount() >= 5, row.board);
}

void TestCompanyView::appGivenReachesTheirNextSession()
{
    const std::unique_ptr<NativeCompanyView> owner = opened(maren);
    QVERIFY(owner);
    QVERIFY(act(*owner, [&] { owner->setMemberApp(u"p-jonah"_s, u"Docs"_s, true); }));
    QCOMPARE(owner->errorText(), QString());
    const auto jonahRow = [&] {
        for (const TarnTeamMember &member : owner->team()->rows())
            if (member.id == "p-jonah"_L1)
                return member;
        return TarnTeamMember();
    };
    // In the shell's order, wherever the app was ticked.
    QCOMPARE(jonahRow().apps, (QStringList { u"Home"_s, u"Support"_s, u"Docs"_s, u"Calls"_s, u"Mail"_s }));

    std::unique_ptr<NativeCompanyView> member = opened(jonah);
    QVERIFY(member);
    QVERIFY(member->sops()->rowCount() >= 10);

    QVERIFY(act(*owner, [&] { owner->setMemberApp(u"p-jonah"_s, u"Docs"_s, false); }));
    QVERIFY(!jonahRow().apps->contains(u"Docs"_s));
    member = opened(jonah);
    QVERIFY(member);
    QCOMPARE(member->sops()->rowCount(), 0);
    QCOMPARE(member->errorText(), QString());
}

void TestCompanyView::readMarkShowsAtOnce()
{
    const std::unique_ptr<NativeCompanyView> view = opened(tomas);
    QVERIFY(view);
    const int unread = view->unreadPosts();
    QVERIFY(unread > 0);
    const auto first = std::find_if(view->thoughts()->rows().begin(), view->thoughts()->rows().end(),
        [](const TarnThoughtPost &post) { return !post.read; });
    const QString id = first->id;
    QSignalSpy sent(view.get(), &NativeCompanyView::actionFinished);
    view->markRead(id);
    QCOMPARE(view->unreadPosts(), unread - 1);
    QVERIFY(sent.wait());
    QCOMPARE(opened(tomas)->unreadPosts(), unread - 1);
}

void TestCompanyView::refusedDecisionShowsTheCurrentOne()
{
    const std::unique_ptr<NativeCompanyView> view = opened(maren);
    QVERIFY(view);
    const auto waiting = std::find_if(view->thoughts()->rows().begin(), view->thoughts()->rows().end(),
        [](const TarnThoughtPost &post) { return !post.decision; });
    QVERIFY(waiting != view->thoughts()->rows().end());
    const TarnThoughtPost shown = *waiting;
    // Decided elsewhere after the screen read the board.
    (void)tarnWaitFor(
        TarnCompanyCalls::decidePost(client.as(maren), shown.id, TarnPostDecision { u"decline"_s, shown.version }));

    QVERIFY(act(*view, [&] { view->decide(shown.id, u"adopt"_s); }));
    QCOMPARE(view->errorText(), u"Maren Holt decided this post in the meantime; it now shows their decision."_s);
    const auto decisionShown = [&] {
        for (const TarnThoughtPost &post : view->thoughts()->rows())
            if (post.id == shown.id)
                return post.decision.value_or(QString());
        return QString();
    };
    QCOMPARE(decisionShown(), u"decline"_s);

    QVERIFY(act(*view, [&] { view->decide(shown.id, u"adopt"_s); }));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(decisionShown(), u"adopt"_s);
}

void TestCompanyView::renameAndSearch()
{
    const std::unique_ptr<NativeCompanyView> view = opened(maren);
    QVERIFY(view);
    QVERIFY(act(*view, [&] { view->renameMe(QString(81, u'm')); }));
    QCOMPARE(view->errorText(), u"A name is at most 80 characters."_s);
    QCOMPARE(view->myName(), u"Maren Holt"_s);
    QVERIFY(act(*view, [&] { view->renameMe(u"Maren  Holt-Berg"_s); }));
    QCOMPARE(view->myName(), u"Maren Holt-Berg"_s);
    QVERIFY(act(*view, [&] { view->renameMe(u"Maren Holt"_s); }));

    QSignalSpy narrowed(view->team(), &QAbstractItemModel::rowsRemoved);
    view->setSearch(u"whitfield"_s);
    QVERIFY(narrowed.wait());
    QCOMPARE(view->team()->rowCount(), 1);
    QCOMPARE(view->team()->rows().first().name, u"Jonah Whitfield"_s);
}

QTEST_GUILESS_MAIN(TestCompanyView)
#include "tst_companyview.moc"
