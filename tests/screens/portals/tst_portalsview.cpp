#include "inbox/InboxTestClient.h"
#include "screens/portals/NativePortalsView.h"

#include <QDate>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

struct ActionRow {
    std::function<void(NativePortalsView &)> act;
    // Whether the screen shows the change afterwards.
    std::function<bool(const NativePortalsView &)> shown;
};

} // namespace

Q_DECLARE_METATYPE(ActionRow)

// The portals screen's state over a real workspace: a key shown once, two
// people changing one portal, and changes that show on the dashboard too.
class TestPortalsView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void issuedKeyIsShownOnce();
    void concurrentEditShowsTheServiceState();
    void changesShowEverywhere_data();
    void changesShowEverywhere();

private:
    [[nodiscard]] std::unique_ptr<NativePortalsView> opened(const QString &email, const QString &clientId);
    static bool act(NativePortalsView &view, const std::function<void(NativePortalsView &)> &action);

    InboxTestClient client;
};

void TestPortalsView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativePortalsView> TestPortalsView::opened(const QString &email, const QString &clientId)
{
    auto view = std::make_unique<NativePortalsView>(client.as(email));
    QSignalSpy refreshed(view.get(), &NativePortalsView::refreshed);
    view->refresh();
    if (!refreshed.wait(10'000))
        return {};
    view->openPortal(clientId);
    if (!refreshed.wait(10'000) || view->openClientId() != clientId)
        return {};
    return view;
}

bool TestPortalsView::act(NativePortalsView &view, const std::function<void(NativePortalsView &)> &action)
{
    QSignalSpy done(&view, &NativePortalsView::actionFinished);
    action(view);
    return done.wait(10'000);
}

void TestPortalsView::issuedKeyIsShownOnce()
{
    const std::unique_ptr<NativePortalsView> view = opened(maren, u"c-marlow"_s);
    QVERIFY(view);
    QVERIFY(act(*view, [](NativePortalsView &v) { v.issuePiloKey(); }));
    const QString key = view->issuedKey();
    QVERIFY(key.startsWith(u"ptk_pilo_"_s));
    QCOMPARE(view->account().value(u"piloKeyTail"_s).toString(), key.right(4));
    view->dismissIssued();
    QCOMPARE(view->issuedKey(), QString());

    // Opening another portal or signing out forgets a key too.
    QVERIFY(act(*view, [](NativePortalsView &v) { v.issueLeadKey(); }));
    QVERIFY(!view->issuedKey().isEmpty());
    view->openPortal(u"c-oakline"_s);
    QCOMPARE(view->issuedKey(), QString());
    QSignalSpy refreshed(view.get(), &NativePortalsView::refreshed);
    QVERIFY(refreshed.wait());
    QVERIFY(act(*view, [](NativePortalsView &v) { v.issueLeadKey(); }));
    view->clear();
    QCOMPARE(view->issuedKey(), QString());
    QCOMPARE(view->openClientId(), QString());
    QCOMPARE(view->accounts()->rowCount(), 0);
}

void TestPortalsView::concurrentEditShowsTheServiceState()
{
    const std::unique_ptr<NativePortalsView> mine = opened(maren, u"c-brightwater"_s);
    const std::unique_ptr<NativePortalsView> theirs = opened(tomas, u"c-brightwater"_s);
    QVERIFY(mine && theirs);
    const QString welcome = mine->account().value(u"welcome"_s).toString();
    QVERIFY(act(*mine, [&](NativePortalsView &v) { v.saveAccount(u"paused"_s, welcome); }));
    QCOMPARE(mine->errorText(), QString());

    QVERIFY(act(*theirs, [&](NativePortalsView &v) { v.saveAccount(u"live"_s, u"Hello"_s); }));
    QCOMPARE(theirs->errorText(), u"Maren Holt changed this portal in the meantime; it now shows their change."_s);
    QCOMPARE(theirs->account().value(u"status"_s).toString(), u"paused"_s);
    QCOMPARE(theirs->account().value(u"welcome"_s).toString(), welcome);
}

void TestPortalsView::changesShowEverywhere_data()
{
    QTest::addColumn<ActionRow>("row");
    QTest::addRow("invite") << ActionRow { [](NativePortalsView &v) {
                                              v.invitePerson(u"Nora Quill"_s, u"nora@fernhill.example"_s);
                                          },
        [](const NativePortalsView &v) {
            const auto &people = v.personRows().rows();
            const auto &accounts = v.accountRows().rows();
            const auto fernhill = std::find_if(
                accounts.begin(), accounts.end(), [](const auto &a) { return a.client_id == "c-fernhill"_L1; });
            return std::any_of(people.begin(), people.end(), [](const auto &p) { return p.name == "Nora Quill"_L1; })
                && fernhill != accounts.end() && fernhill->people_count == people.size();
        } };
    QTest::addRow("acknowledge") << ActionRow { [](NativePortalsView &v) {
                                                   for (const TarnPortalAlert &alert : v.alertRows().rows())
                                                       if (alert.client_id == "c-fernhill"_L1)
                                                           v.acknowledgeAlert(alert.id);
                                               },
        [](const NativePortalsView &v) {
            const auto &alerts = v.alertRows().rows();
            return std::none_of(
                alerts.begin(), alerts.end(), [](const auto &a) { return a.client_id == "c-fernhill"_L1; });
        } };
    QTest::addRow("report") << ActionRow { [](NativePortalsView &v) {
                                              v.createReport(u"Winter summary"_s,
                                                  QDate::currentDate().addMonths(-2).toString(u"yyyy-MM"_s));
                                          },
        [](const NativePortalsView &v) {
            const auto &reports = v.reportRows().rows();
            return std::any_of(reports.begin(), reports.end(),
                [](const auto &r) { return r.title == "Winter summary"_L1 && !r.published; });
        } };
    QTest::addRow("refused") << ActionRow { [](NativePortalsView &v) { v.createReport(u"Too early"_s, u"2999-01"_s); },
        [](const NativePortalsView &v) { return v.errorText().contains(u"YYYY-MM"_s); } };
}

void TestPortalsView::changesShowEverywhere()
{
    QFETCH(ActionRow, row);
    const std::unique_ptr<NativePortalsView> view = opened(maren, u"c-fernhill"_s);
    QVERIFY(view);
    QSignalSpy resets(view->accounts(), &QAbstractItemModel::modelReset);
    QVERIFY(act(*view, row.act));
    QVERIFY(row.shown(*view));
    QCOMPARE(resets.count(), 0);
}

QTEST_GUILESS_MAIN(TestPortalsView)
#include "tst_portalsview.moc"
