#include "inbox/InboxTestClient.h"
#include "screens/owner/NativeOwnerView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_OwnerPlugin)

using namespace Qt::StringLiterals;

// The dashboard drawn offscreen over the demo workspace: its figures lead to
// the screens behind them, by pointer and by keyboard; its state keeps rows
// that did not change and shows a refusal.
class TestOwnerScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void figuresOpenTheirScreens_data();
    void figuresOpenTheirScreens();
    void unchangedRefreshKeepsTheRows();
    void refusalIsShown();
    void cleanupTestCase();

private:
    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeOwnerView> view;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestOwnerScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    view = std::make_unique<NativeOwnerView>(client.as(u"maren@halvard.example"_s));
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Owner\nOwnerScreen { width: 1100; height: 800 }", QUrl());
    QSignalSpy refreshed(view.get(), &NativeOwnerView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(view.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
    QTRY_VERIFY(!tarnNamedItems(window.contentItem(), u"figure-invoices"_s).isEmpty());
    // Laid out: the tiles stand apart rather than on one another.
    const auto at = [this](const QString &name) {
        return tarnNamedItems(window.contentItem(), name).constFirst()->mapToScene({});
    };
    QTRY_VERIFY(at(u"figure-moneyIn"_s) != at(u"figure-calls"_s));
    QCOMPARE(view->team()->rowCount(), 6);
    for (const QVariant &bar : view->chartIn() + view->chartOut())
        QVERIFY(bar.toDouble() > 0 && bar.toDouble() <= view->chartTop());
}

void TestOwnerScreen::cleanupTestCase()
{
    screen.reset();
}

void TestOwnerScreen::figuresOpenTheirScreens_data()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<QStringList>("place");
    QTest::addRow("invoices, clicked") << u"invoices"_s << false << QStringList { u"documents"_s, u"Invoices"_s };
    QTest::addRow("inbox, Enter") << u"inbox"_s << true << QStringList { u"calls"_s, u"Inbox"_s };
    QTest::addRow("payments, no section") << u"payments"_s << false << QStringList { u"payments"_s, QString() };
}

void TestOwnerScreen::figuresOpenTheirScreens()
{
    QFETCH(QString, figure);
    QFETCH(bool, byKeyboard);
    QFETCH(QStringList, place);
    const QList<QQuickItem *> tiles = tarnNamedItems(window.contentItem(), u"figure-"_s + figure);
    QCOMPARE(tiles.size(), 1);
    QQuickItem *tile = tiles.constFirst();
    QSignalSpy opened(screen.get(), SIGNAL(openPlace(QString, QString)));
    if (byKeyboard) {
        tile->forceActiveFocus();
        QTest::keyClick(&window, Qt::Key_Return);
    } else {
        QTest::mouseClick(&window, Qt::LeftButton, {}, tile->mapToScene({ 10, 10 }).toPoint());
    }
    QCOMPARE(opened.size(), 1);
    QCOMPARE((QStringList { opened.at(0).at(0).toString(), opened.at(0).at(1).toString() }), place);
}

void TestOwnerScreen::unchangedRefreshKeepsTheRows()
{
    QSignalSpy reset(view->team(), &QAbstractItemModel::modelReset);
    QSignalSpy removed(view->figures(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy refreshed(view.get(), &NativeOwnerView::refreshed);
    view->refresh();
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(reset.count() + removed.count(), 0);
    QCOMPARE(view->errorText(), QString());
}

void TestOwnerScreen::refusalIsShown()
{
    NativeOwnerView member(client.as(u"priya@halvard.example"_s));
    QSignalSpy refreshed(&member, &NativeOwnerView::refreshed);
    member.appear();
    QVERIFY(refreshed.wait(10'000));
    QVERIFY(member.loaded());
    QCOMPARE(member.errorText(), u"The dashboard is open to the company's owners."_s);
    QCOMPARE(member.figures()->rowCount(), 0);
}

QTEST_MAIN(TestOwnerScreen)
#include "tst_ownerscreen.moc"
