#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/overview/NativeOverviewView.h"
#include "screens/overview/TarnOverviewCalls.h"
#include "support/FailureOf.h"
#include "support/TestScreenHost.h"

#include <QSignalSpy>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_OverviewPlugin)

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

} // namespace

// The overview over the demo workspace: who may read it, a board item moved
// by two people at once, an order moved on to delivery, and the screen drawn
// offscreen with each section's rows.
class TestOverviewScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void gated();
    void concurrentMoveShowsTheOtherPersons();
    void orderMovesOnToDelivery();
    void cleanupTestCase();

private:
    InboxTestClient client;
    std::unique_ptr<NativeOverviewView> view;
    TestScreenHost host;
};

void TestOverviewScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    view = std::make_unique<NativeOverviewView>(client.as(maren));
    QSignalSpy refreshed(view.get(), &NativeOverviewView::refreshed);
    QCOMPARE(host.show("import PiloTarn.Overview\nOverviewScreen {}", u"view"_s, view.get()), QString());
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(view->errorText(), QString());
    QTRY_COMPARE(host.shown(u"teamNowRow"_s).size(), view->teamSize());
    QVERIFY(view->teamSize() >= 5);
}

void TestOverviewScreen::cleanupTestCase()
{
    host.close();
}

void TestOverviewScreen::gated()
{
    QCOMPARE(failureOf(TarnOverviewCalls::overviewTeam(client.as(u"jonah@halvard.example"_s))),
        u"The overview is not open to you."_s);
    QCOMPARE(failureOf(TarnOverviewCalls::productBoards(client.as(tomas))), QString());
}

void TestOverviewScreen::concurrentMoveShowsTheOtherPersons()
{
    host.screen()->setProperty("section", u"Product boards"_s);
    QTRY_VERIFY(!host.shown(u"boardCard"_s).isEmpty());
    const QStringList stages = view->stages();
    QVERIFY(stages.size() >= 3);
    const auto *first = qobject_cast<NativeBoardItemModel *>(view->stageModel(stages.at(1)));
    QVERIFY(first && first->rowCount() > 0);
    const TarnBoardItem item = first->rows().constFirst();

    // Tomas moves it on first; the move here was based on what was seen before.
    tarnWaitFor(TarnOverviewCalls::moveBoardItem(
        client.as(tomas), item.id, TarnBoardMove { .stage = stages.at(2), .version = item.version }));
    QSignalSpy settled(view.get(), &NativeOverviewView::refreshed);
    view->moveItem(item.id, stages.at(0));
    const auto *backModel = qobject_cast<NativeBoardItemModel *>(view->stageModel(stages.at(0)));
    QVERIFY(std::any_of(backModel->rows().begin(), backModel->rows().end(),
        [&item](const TarnBoardItem &i) { return i.id == item.id; }));
    QVERIFY(settled.wait());
    QCOMPARE(view->errorText(), u"Tomas Reyes moved this in the meantime; it now shows where they put it."_s);
    const auto *theirs = qobject_cast<NativeBoardItemModel *>(view->stageModel(stages.at(2)));
    QVERIFY(std::any_of(
        theirs->rows().begin(), theirs->rows().end(), [&item](const TarnBoardItem &i) { return i.id == item.id; }));
}

void TestOverviewScreen::orderMovesOnToDelivery()
{
    host.screen()->setProperty("section", u"Fulfilment"_s);
    QTRY_VERIFY(!host.shown(u"orderRow"_s).isEmpty());
    const auto packing = std::find_if(view->orders()->rows().begin(), view->orders()->rows().end(),
        [](const TarnOrder &o) { return o.status == "packing"_L1; });
    QVERIFY(packing != view->orders()->rows().end());
    const QString id = packing->id;
    for (const char *status : { "shipped", "delivered" }) {
        QSignalSpy done(view.get(), &NativeOverviewView::refreshed);
        view->advanceOrder(id);
        QVERIFY(done.wait());
        const auto now = std::find_if(view->orders()->rows().begin(), view->orders()->rows().end(),
            [&id](const TarnOrder &o) { return o.id == id; });
        QCOMPARE(now->status, QString::fromLatin1(status));
        QVERIFY(now->carrier && now->tracking);
    }
    // Delivered orders sink below those still on their way.
    QCOMPARE(view->orders()->rows().constLast().status, u"delivered"_s);
    QCOMPARE(failureOf(TarnOverviewCalls::advanceOrder(client.as(maren), id)), u"This order has been delivered."_s);
}

QTEST_MAIN(TestOverviewScreen)
#include "tst_overviewscreen.moc"
