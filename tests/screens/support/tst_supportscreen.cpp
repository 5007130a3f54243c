#include "inbox/InboxTestClient.h"
#include "screens/support/NativeSupportView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_SupportPlugin)

using namespace Qt::StringLiterals;

// The support board drawn offscreen over the demo workspace, used by
// keyboard and pointer as a person would.
class TestSupportScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void aCardMovesByKeyboardAndOpensWithEnter();
    void aCardIsDraggedToAnotherColumn();
    void typingInTheSearchNarrowsTheColumns();
    void theTimerStartsFromTheTaskAndStopsFromTheBar();
    void cleanupTestCase();

private:
    // The drawn card of the task titled `title`, once it is in `status`'s column.
    [[nodiscard]] QQuickItem *card(const QString &title, const QString &status) const;
    [[nodiscard]] QString idOf(const QString &title) const;

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeSupportView> support;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestSupportScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    support = std::make_unique<NativeSupportView>(client.as(u"maren@halvard.example"_s), *settings);
    // Few enough cards that each column shows all of its own.
    support->setClientFilter(u"c-marlow"_s);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1200, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Support\nSupportScreen { width: 1200; height: 800 }", QUrl());
    QSignalSpy refreshed(support.get(), &NativeSupportView::refreshed);
    screen.reset(component.createWithInitialProperties(
        { { u"support"_s, QVariant::fromValue(support.get()) }, { u"section"_s, u"Maintenance"_s } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
    QTRY_VERIFY(card(u"Renew the firewall licence"_s, u"todo"_s));
}

void TestSupportScreen::cleanupTestCase()
{
    screen.reset();
}

QString TestSupportScreen::idOf(const QString &title) const
{
    for (const TarnSupportTaskSummary &task : support->board().tasks)
        if (task.title == title)
            return task.id;
    return {};
}

QQuickItem *TestSupportScreen::card(const QString &title, const QString &status) const
{
    const QList<QQuickItem *> columns = tarnNamedItems(window.contentItem(), u"supportColumn-"_s + status);
    if (columns.isEmpty())
        return nullptr;
    const QList<QQuickItem *> cards = tarnNamedItems(columns.first(), idOf(title));
    return cards.isEmpty() ? nullptr : cards.first();
}

void TestSupportScreen::aCardMovesByKeyboardAndOpensWithEnter()
{
    QQuickItem *todo = card(u"Renew the firewall licence"_s, u"todo"_s);
    QVERIFY(todo);
    todo->forceActiveFocus();
    QSignalSpy finished(support.get(), &NativeSupportView::actionFinished);
    QTest::keyClick(&window, Qt::Key_Right, Qt::ControlModifier);
    QVERIFY(finished.wait(10'000));
    QCOMPARE(support->errorText(), QString());
    QQuickItem *moved = nullptr;
    QTRY_VERIFY((moved = card(u"Renew the firewall licence"_s, u"in_progress"_s)));

    moved->forceActiveFocus();
    QSignalSpy settled(support->task(), &NativeSupportTaskDetail::settled);
    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(settled.wait(10'000));
    QTRY_COMPARE(tarnTextsOf(tarnNamedItems(window.contentItem(), u"supportTaskTitle"_s)),
        QStringList { u"Renew the firewall licence"_s });
    QTest::keyClick(&window, Qt::Key_Escape);
    QTRY_VERIFY(tarnNamedItems(window.contentItem(), u"supportTaskTitle"_s).isEmpty());
}

void TestSupportScreen::aCardIsDraggedToAnotherColumn()
{
    QQuickItem *from = card(u"Scanner sends to the wrong folder"_s, u"todo"_s);
    const QList<QQuickItem *> waiting = tarnNamedItems(window.contentItem(), u"supportColumn-waiting"_s);
    QVERIFY(from && !waiting.isEmpty());
    const QPoint start = from->mapToScene(QPointF(from->width() / 2, from->height() / 2)).toPoint();
    const QPoint end = waiting.first()->mapToScene(QPointF(waiting.first()->width() / 2, 40)).toPoint();
    QSignalSpy finished(support.get(), &NativeSupportView::actionFinished);
    QTest::mousePress(&window, Qt::LeftButton, {}, start);
    for (int step = 1; step <= 10; ++step)
        QTest::mouseMove(&window, start + (end - start) * step / 10, 10);
    QTest::mouseRelease(&window, Qt::LeftButton, {}, end);
    QVERIFY(finished.wait(10'000));
    QTRY_VERIFY(card(u"Scanner sends to the wrong folder"_s, u"waiting"_s));
}

void TestSupportScreen::typingInTheSearchNarrowsTheColumns()
{
    const QList<QQuickItem *> fields = tarnNamedItems(window.contentItem(), u"supportSearch"_s);
    QCOMPARE(fields.size(), 1);
    QTest::keyClick(&window, Qt::Key_Slash);
    QTRY_VERIFY(fields.first()->hasActiveFocus());
    for (const char key : { 'v', 'p', 'n' })
        QTest::keyClick(&window, key);
    QCOMPARE(support->searchText(), u"vpn"_s);
    QTRY_VERIFY(card(u"VPN for working from home"_s, u"waiting"_s));
    QTRY_VERIFY(!card(u"Scanner sends to the wrong folder"_s, u"waiting"_s));
    QCOMPARE(support->shownCount(), 1);
    // Cleared elsewhere (the "Clear filters" button), the field follows.
    support->clearFilters();
    QCOMPARE(fields.first()->property("text").toString(), QString());
    QTRY_VERIFY(card(u"Scanner sends to the wrong folder"_s, u"waiting"_s));
}

void TestSupportScreen::theTimerStartsFromTheTaskAndStopsFromTheBar()
{
    // Clicked through its signal: the bar moves the board down as it
    // appears, so a pointer would aim at a button still on the move.
    const auto click = [this](const QString &name) {
        const QList<QQuickItem *> items = tarnNamedItems(window.contentItem(), name);
        return !items.isEmpty() && QMetaObject::invokeMethod(items.first(), "clicked");
    };
    // The owner's demo timer runs elsewhere; starting here moves it.
    QSignalSpy settled(support->task(), &NativeSupportTaskDetail::settled);
    support->openTask(idOf(u"VPN for working from home"_s));
    QVERIFY(settled.wait(10'000));
    QSignalSpy finished(support.get(), &NativeSupportView::actionFinished);
    QTRY_VERIFY(!tarnNamedItems(window.contentItem(), u"supportTaskTimer"_s).isEmpty());
    QVERIFY(click(u"supportTaskTimer"_s));
    QVERIFY(finished.wait(10'000));
    QCOMPARE(support->timerTaskTitle(), u"VPN for working from home"_s);
    QTRY_VERIFY(tarnNamedItems(window.contentItem(), u"supportTimer"_s).size() == 1);
    QTRY_VERIFY(!tarnNamedItems(window.contentItem(), u"stopTimer"_s).isEmpty());

    QVERIFY(click(u"stopTimer"_s));
    QVERIFY(finished.wait(10'000));
    QCOMPARE(support->errorText(), QString());
    QCOMPARE(support->timerTaskId(), QString());
    QTRY_VERIFY(tarnNamedItems(window.contentItem(), u"supportTimer"_s).isEmpty());
    support->task()->close();
}

QTEST_MAIN(TestSupportScreen)
#include "tst_supportscreen.moc"
