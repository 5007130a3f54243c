#include "inbox/InboxTestClient.h"
#include "screens/portals/NativePortalsView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_PortalsPlugin)

using namespace Qt::StringLiterals;

// The portals screen drawn offscreen over the demo workspace: a portal
// opened from the list, and a key issued and shown once.
class TestPortalsScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void portalOpensFromTheList();
    void issuedKeyShowsUntilDone();
    void cleanupTestCase();

private:
    [[nodiscard]] QList<QQuickItem *> shown(const QString &name) const
    {
        return tarnNamedItems(window.contentItem(), name);
    }
    void click(QQuickItem *item)
    {
        QTest::mouseClick(&window, Qt::LeftButton, {}, item->mapToScene({ 10, 10 }).toPoint());
    }

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativePortalsView> portals;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestPortalsScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    portals = std::make_unique<NativePortalsView>(client.as(u"maren@halvard.example"_s));
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 900);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Portals\nPortalsScreen { width: 1100; height: 900 }", QUrl());
    QSignalSpy refreshed(portals.get(), &NativePortalsView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"portals"_s, QVariant::fromValue(portals.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
}

void TestPortalsScreen::portalOpensFromTheList()
{
    QTRY_VERIFY(!shown(u"portalAlertRow"_s).isEmpty());
    // Every customer has a portal; the list draws those in sight.
    QTRY_VERIFY(!shown(u"portalAccountRow"_s).isEmpty());
    QSignalSpy refreshed(portals.get(), &NativePortalsView::refreshed);
    QQuickItem *first = shown(u"portalAccountRow"_s).constFirst();
    click(first);
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(portals->openClientId(), first->property("clientId").toString());
    QTRY_COMPARE(shown(u"portalPersonRow"_s).size(), portals->people()->rowCount());
}

void TestPortalsScreen::issuedKeyShowsUntilDone()
{
    QVERIFY(!portals->openClientId().isEmpty());
    const QList<QQuickItem *> issue = shown(u"issuePiloKey"_s);
    QCOMPARE(issue.size(), 1);
    QVERIFY(shown(u"issuedKey"_s).isEmpty());
    QSignalSpy done(portals.get(), &NativePortalsView::actionFinished);
    click(issue.constFirst());
    QVERIFY(done.wait(10'000));
    QVERIFY(!portals->issuedKey().isEmpty());
    QTRY_COMPARE(shown(u"issuedKey"_s).size(), 1);
    portals->dismissIssued();
    QTRY_VERIFY(shown(u"issuedKey"_s).isEmpty());
}

void TestPortalsScreen::cleanupTestCase()
{
    screen.reset();
}

QTEST_MAIN(TestPortalsScreen)
#include "tst_portalsscreen.moc"
