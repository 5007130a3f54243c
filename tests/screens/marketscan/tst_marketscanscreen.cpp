#include "inbox/InboxTestClient.h"
#include "screens/marketscan/NativeMarketScanView.h"
#include "support/TestScreenHost.h"

#include <QSignalSpy>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MarketScanPlugin)

using namespace Qt::StringLiterals;

// The market scan drawn offscreen over the demo workspace: the newest scan
// opens by itself, a button narrows its rows, and a new scan is typed and
// run by keyboard.
class TestMarketScanScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void narrowedByOpportunity();
    void scanTypedAndRun();
    void cleanupTestCase();

private:
    InboxTestClient client;
    std::unique_ptr<NativeMarketScanView> view;
    TestScreenHost host;
};

void TestMarketScanScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    view = std::make_unique<NativeMarketScanView>(client.as(u"maren@halvard.example"_s));
    QSignalSpy refreshed(view.get(), &NativeMarketScanView::refreshed);
    QCOMPARE(host.show("import PiloTarn.MarketScan\nMarketScanScreen {}", u"view"_s, view.get()), QString());
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->openScanId(), view->scans()->rows().constFirst().id);
}

void TestMarketScanScreen::cleanupTestCase()
{
    host.close();
}

void TestMarketScanScreen::narrowedByOpportunity()
{
    QTRY_VERIFY(!host.shown(u"businessRow"_s).isEmpty());
    const QList<QQuickItem *> high = host.shown(u"opportunity_high"_s);
    QCOMPARE(high.size(), 1);
    host.click(high.constFirst(), { 10, 10 });
    QCOMPARE(view->opportunity(), u"high"_s);
    QVERIFY(view->businesses()->rowCount() > 0);
    for (const TarnMarketBusiness &b : view->businesses()->rows())
        QCOMPARE(b.opportunity, u"high"_s);
    QTRY_COMPARE(host.shown(u"businessRow"_s).size(), view->businesses()->rowCount());
    view->setOpportunity({});
}

void TestMarketScanScreen::scanTypedAndRun()
{
    QTest::keyClick(&host.window, Qt::Key_N, Qt::ControlModifier);
    for (const char key : "florists"_L1)
        QTest::keyClick(&host.window, key);
    QCOMPARE(view->trade(), u"florists"_s);
    QVERIFY(!view->canScan());
    view->setArea(u"Bend, OR"_s);
    QSignalSpy done(view.get(), &NativeMarketScanView::refreshed);
    QTest::keyClick(&host.window, Qt::Key_Return);
    QVERIFY(view->scanning());
    QVERIFY(done.wait());
    QCOMPARE(view->openScanTitle(), u"Florists in Bend, OR"_s);
    QCOMPARE(view->scans()->rows().constFirst().id, view->openScanId());
    QTRY_VERIFY(!host.shown(u"businessRow"_s).isEmpty());
}

QTEST_MAIN(TestMarketScanScreen)
#include "tst_marketscanscreen.moc"
