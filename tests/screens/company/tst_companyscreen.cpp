#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/company/NativeCompanyView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_CompanyPlugin)

using namespace Qt::StringLiterals;

// The company screen drawn offscreen over the demo workspace as its owner,
// used by pointer as a person would.
class TestCompanyScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void appTickedChangesAccess();
    void handbookPageReads();
    void decisionButtons();
    void connectionsByPointer();
    void cleanupTestCase();

private:
    [[nodiscard]] QQuickItem *only(const QString &name) const
    {
        const QList<QQuickItem *> items = tarnNamedItems(window.contentItem(), name);
        return items.size() == 1 ? items.constFirst() : nullptr;
    }
    [[nodiscard]] bool clicked(QQuickItem *item)
    {
        QSignalSpy done(company.get(), &NativeCompanyView::actionFinished);
        QTest::mouseClick(
            &window, Qt::LeftButton, {}, item->mapToScene({ item->width() / 2, item->height() / 2 }).toPoint());
        return !done.isEmpty() || done.wait();
    }
    void show(const QString &section)
    {
        // Rows and their app boxes are placed as the page is first drawn.
        QSignalSpy drawn(&window, &QQuickWindow::frameSwapped);
        screen->setProperty("section", section);
        QVERIFY(drawn.wait());
    }

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeCompanyView> company;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestCompanyScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    TarnAPI &api = client.as(u"maren@halvard.example"_s);
    (void)tarnWaitFor(api.refreshSession());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    company = std::make_unique<NativeCompanyView>(api);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Company\nCompanyScreen { width: 1100; height: 700 }", QUrl());
    QSignalSpy refreshed(company.get(), &NativeCompanyView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"company"_s, QVariant::fromValue(company.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
}

void TestCompanyScreen::cleanupTestCase()
{
    screen.reset();
}

void TestCompanyScreen::appTickedChangesAccess()
{
    show(u"Team & access"_s);
    QVERIFY(only(u"appToggle_p-tomas_Payments"_s));
    // The owner's apps are not offered to be ticked.
    QVERIFY(!only(u"appToggle_p-maren_Books"_s) || !only(u"appToggle_p-maren_Books"_s)->isVisible());
    QQuickItem *box = only(u"appToggle_p-tomas_Payments"_s);
    QVERIFY(clicked(box));
    QCOMPARE(company->errorText(), QString());
    const auto tomas = std::find_if(company->team()->rows().begin(), company->team()->rows().end(),
        [](const TarnTeamMember &m) { return m.id == "p-tomas"_L1; });
    QVERIFY(tomas->apps->contains(u"Payments"_s));
    QVERIFY(only(u"appToggle_p-tomas_Payments"_s)->property("checked").toBool());
}

void TestCompanyScreen::handbookPageReads()
{
    show(u"SOPs"_s);
    QTRY_VERIFY(!tarnNamedItems(window.contentItem(), u"sopRow"_s).isEmpty());
    QQuickItem *page = tarnNamedItems(window.contentItem(), u"sopRow"_s).constFirst();
    QTest::mouseClick(&window, Qt::LeftButton, {}, page->mapToScene({ 8, 8 }).toPoint());
    QTRY_COMPARE(only(u"sopBody"_s)->property("text").toString(), company->sops()->rows().constFirst().body);
}

void TestCompanyScreen::decisionButtons()
{
    show(u"Thought board"_s);
    QTRY_VERIFY(!tarnNamedItems(window.contentItem(), u"decide_adopt"_s).isEmpty());
    const TarnThoughtPost first = company->thoughts()->rows().constFirst();
    QList<QQuickItem *> buttons = tarnNamedItems(window.contentItem(), u"decide_later"_s);
    std::sort(buttons.begin(), buttons.end(),
        [](QQuickItem *a, QQuickItem *b) { return a->mapToScene({}).y() < b->mapToScene({}).y(); });
    QVERIFY(clicked(buttons.constFirst()));
    QCOMPARE(company->errorText(), QString());
    QCOMPARE(company->thoughts()->rows().constFirst().id, first.id);
    QCOMPARE(company->thoughts()->rows().constFirst().decision, u"later"_s);
}

void TestCompanyScreen::connectionsByPointer()
{
    NativeConnectionsView *connections = company->connections();
    QSignalSpy read(connections, &NativeConnectionsView::refreshed);
    show(u"Connections"_s);
    QVERIFY(!read.isEmpty() || read.wait());
    // The accounts' rows are placed as the frame after their arrival is drawn.
    QSignalSpy drawn(&window, &QQuickWindow::frameSwapped);
    QVERIFY(drawn.wait());
    const QString checking = connections->accounts()->rows().constFirst().id;
    QVERIFY(only(u"reconcile_"_s + checking));
    // Maren's mailbox is connected: Google offers nothing to connect.
    QCOMPARE(only(u"googleRow"_s)->property("text").toString(), u"Connected as maren@halvard.example"_s);
    QVERIFY(tarnNamedItems(window.contentItem(), u"googleConnect"_s).isEmpty());

    // The typed day is the one reconciled.
    const QString yesterday = QDate::currentDate().addDays(-1).toString(Qt::ISODate);
    QVERIFY(only(u"reconcileDay_"_s + checking)->setProperty("text", yesterday));
    QSignalSpy done(connections, &NativeConnectionsView::actionFinished);
    QQuickItem *reconcile = only(u"reconcile_"_s + checking);
    QTest::mouseClick(&window, Qt::LeftButton, {},
        reconcile->mapToScene({ reconcile->width() / 2, reconcile->height() / 2 }).toPoint());
    QVERIFY(done.wait());
    QCOMPARE(connections->errorText(), QString());
    QTRY_VERIFY(only(u"reconciliation"_s)->isVisible());
    QCOMPARE(only(u"reconciliation"_s)->property("text").toString(), connections->reconciliation());
    QCOMPARE(connections->accounts()->rows().constFirst().reconciled_on, yesterday);
}

QTEST_MAIN(TestCompanyScreen)
#include "tst_companyscreen.moc"
