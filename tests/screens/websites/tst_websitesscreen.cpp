#include "inbox/InboxTestClient.h"
#include "screens/websites/NativeWebsitesView.h"
#include "support/TestScreenHost.h"

#include <QSignalSpy>
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
    InboxTestClient client;
    std::unique_ptr<NativeWebsitesView> view;
    TestScreenHost host;
};

void TestWebsitesScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    view = std::make_unique<NativeWebsitesView>(client.as(u"sam@halvard.example"_s));
    QSignalSpy refreshed(view.get(), &NativeWebsitesView::refreshed);
    QCOMPARE(host.show("import PiloTarn.Websites\nWebsitesScreen {}", u"view"_s, view.get()), QString());
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(view->errorText(), QString());
}

void TestWebsitesScreen::cleanupTestCase()
{
    host.close();
}

void TestWebsitesScreen::searchedAndChecked()
{
    QTRY_COMPARE(host.shown(u"websiteRow"_s).size(), view->totalCount());
    QSignalSpy resets(view->sites(), &QAbstractItemModel::modelReset);
    view->setSearch(u"bakery"_s);
    QCOMPARE(view->sites()->rowCount(), 1);
    QTRY_COMPARE(host.shown(u"websiteRow"_s).size(), 1);
    QCOMPARE(resets.count(), 0);

    view->setCheckText(u"not a site"_s);
    view->check();
    QVERIFY(!view->checking());
    QCOMPARE(view->errorText(), u"Type a site's address, such as oaklinestudio.example."_s);

    QSignalSpy done(view.get(), &NativeWebsitesView::refreshed);
    QQuickItem *button = host.shown(u"websiteCheck"_s).constFirst();
    host.click(button, { 8, 8 });
    QVERIFY(view->checking());
    QVERIFY(done.wait());
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->checkedUrl(), u"https://"_s + view->sites()->rows().constFirst().domain);
    QCOMPARE(view->scores().size(), 5);
    QTRY_COMPARE(host.shown(u"siteFinding"_s).size(), view->findings().size());
    view->setSearch({});
}

QTEST_MAIN(TestWebsitesScreen)
#include "tst_websitesscreen.moc"
