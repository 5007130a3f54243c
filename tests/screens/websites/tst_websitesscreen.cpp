#include "inbox/InboxTestClient.h"
#include "screens/websites/NativeWebsitesView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_WebsitesPlugin)

using namespace Qt::StringLiterals;

// The websites screen drawn offscreen over the demo workspace: searched in
// place, a typed address refused before it is sent, and a listed site checked
// by its button.
class TestWebsitesScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void searchedAndChecked();
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
    std::unique_ptr<NativeWebsitesView> view;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestWebsitesScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    view = std::make_unique<NativeWebsitesView>(client.as(u"sam@halvard.example"_s));
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Websites\nWebsitesScreen { width: 1100; height: 800 }", QUrl());
    QSignalSpy refreshed(view.get(), &NativeWebsitesView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(view.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(view->errorText(), QString());
}

void TestWebsitesScreen::cleanupTestCase()
{
    screen.reset();
}

void TestWebsitesScreen::searchedAndChecked()
{
    QTRY_COMPARE(shown(u"websiteRow"_s).size(), view->totalCount());
    QSignalSpy resets(view->sites(), &QAbstractItemModel::modelReset);
    view->setSearch(u"bakery"_s);
    QCOMPARE(view->sites()->rowCount(), 1);
    QTRY_COMPARE(shown(u"websiteRow"_s).size(), 1);
    QCOMPARE(resets.count(), 0);

    view->setCheckText(u"not a site"_s);
    view->check();
    QVERIFY(!view->checking());
    QCOMPARE(view->errorText(), u"Type a site's address, such as oaklinestudio.example."_s);

    QSignalSpy done(view.get(), &NativeWebsitesView::refreshed);
    QQuickItem *button = shown(u"websiteCheck"_s).constFirst();
    QTest::mouseClick(&window, Qt::LeftButton, {}, button->mapToScene({ 8, 8 }).toPoint());
    QVERIFY(view->checking());
    QVERIFY(done.wait());
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->checkedUrl(), u"https://"_s + view->sites()->rows().constFirst().domain);
    QCOMPARE(view->scores().size(), 5);
    QTRY_COMPARE(shown(u"siteFinding"_s).size(), view->findings().size());
    view->setSearch({});
}

QTEST_MAIN(TestWebsitesScreen)
#include "tst_websitesscreen.moc"
