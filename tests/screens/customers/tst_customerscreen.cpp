#include "inbox/InboxTestClient.h"
#include "screens/customers/NativeCustomersView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_CustomersPlugin)

using namespace Qt::StringLiterals;

// The register drawn offscreen over the demo workspace, used by pointer and
// keyboard as a person would.
class TestCustomerScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void listOpensByKeyboard();
    void pipelineDrawsEveryStage();
    void cleanupTestCase();

private:
    [[nodiscard]] QList<QQuickItem *> shown(const QString &name) const
    {
        return tarnNamedItems(window.contentItem(), name);
    }

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeCustomersView> view;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestCustomerScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    view = std::make_unique<NativeCustomersView>(client.as(u"maren@halvard.example"_s));
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1300, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Customers\nCustomersScreen { width: 1300; height: 800 }", QUrl());
    QSignalSpy refreshed(view.get(), &NativeCustomersView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(view.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    // Once made, the screen loads on its own.
    QVERIFY(refreshed.wait(10'000));
    QTRY_VERIFY(!shown(u"customerRow"_s).isEmpty());
}

void TestCustomerScreen::cleanupTestCase()
{
    screen.reset();
}

void TestCustomerScreen::listOpensByKeyboard()
{
    // "/" reaches the search; typing narrows the list; Down and Enter open.
    QTest::keyClick(&window, Qt::Key_Slash);
    for (const char key : "oakline"_ba)
        QTest::keyClick(&window, key);
    QTRY_COMPARE(tarnTextsOf(shown(u"customerRow"_s)), QStringList { u"Oakline Studio"_s });
    QSignalSpy loaded(view->profile(), &NativeCustomerProfile::loaded);
    QTest::keyClick(&window, Qt::Key_Down);
    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(loaded.wait(10'000));
    QCOMPARE(view->profile()->clientId(), u"c-oakline"_s);
    QTRY_COMPARE(tarnTextsOf(shown(u"customerName"_s)), QStringList { u"Oakline Studio"_s });
    QTRY_VERIFY(tarnNamedItems(window.contentItem(), u"customerNote"_s).size() == 1);

    // Escape leaves the list's search alone and closes the profile.
    QTest::keyClick(&window, Qt::Key_Escape);
    QTRY_VERIFY(!view->profile()->isOpen());
}

void TestCustomerScreen::pipelineDrawsEveryStage()
{
    view->setSearchText({});
    screen->setProperty("pipeline", true);
    QTRY_COMPARE(shown(u"pipelineCard"_s).size(), view->count());
}

QTEST_MAIN(TestCustomerScreen)
#include "tst_customerscreen.moc"
