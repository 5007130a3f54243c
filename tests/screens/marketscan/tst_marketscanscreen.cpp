#include "inbox/InboxTestClient.h"
#include "screens/marketscan/NativeMarketScanView.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
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
    [[nodiscard]] QList<QQuickItem *> shown(const QString &name) const
    {
        QList<QQuickItem *> items = tarnNamedItems(window.contentItem(), name);
        items.removeIf([](QQuickItem *item) { return !item->isVisible(); });
        return items;
    }

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeMarketScanView> view;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestMarketScanScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    view = std::make_unique<NativeMarketScanView>(client.as(u"maren@halvard.example"_s));
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.MarketScan\nMarketScanScreen { width: 1100; height: 800 }", QUrl());
    QSignalSpy refreshed(view.get(), &NativeMarketScanView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(view.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->openScanId(), view->scans()->rows().constFirst().id);
}

void TestMarketScanScreen::cleanupTestCase()
{
    screen.reset();
}

void TestMarketScanScreen::narrowedByOpportunity()
{
    QTRY_VERIFY(!shown(u"businessRow"_s).isEmpty());
    const QList<QQuickItem *> high = shown(u"opportunity_high"_s);
    QCOMPARE(high.size(), 1);
    QTest::mouseClick(&window, Qt::LeftButton, {}, high.constFirst()->mapToScene({ 10, 10 }).toPoint());
    QCOMPARE(view->opportunity(), u"high"_s);
    QVERIFY(view->businesses()->rowCount() > 0);
    for (const TarnMarketBusiness &b : view->businesses()->rows())
        QCOMPARE(b.opportunity, u"high"_s);
    QTRY_COMPARE(shown(u"businessRow"_s).size(), view->businesses()->rowCount());
    view->setOpportunity({});
}

void TestMarketScanScreen::scanTypedAndRun()
{
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    for (const char key : "florists"_L1)
        QTest::keyClick(&window, key);
    QCOMPARE(view->trade(), u"florists"_s);
    QVERIFY(!view->canScan());
    view->setArea(u"Bend, OR"_s);
    QSignalSpy done(view.get(), &NativeMarketScanView::refreshed);
    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(view->scanning());
    QVERIFY(done.wait());
    QCOMPARE(view->openScanTitle(), u"Florists in Bend, OR"_s);
    QCOMPARE(view->scans()->rows().constFirst().id, view->openScanId());
    QTRY_VERIFY(!shown(u"businessRow"_s).isEmpty());
}

QTEST_MAIN(TestMarketScanScreen)
#include "tst_marketscanscreen.moc"
