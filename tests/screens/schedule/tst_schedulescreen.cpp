#include "inbox/InboxTestClient.h"
#include "screens/schedule/NativeScheduleView.h"
#include "screens/schedule/ScheduleRules.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QClipboard>
#include <QGuiApplication>
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
Q_IMPORT_QML_PLUGIN(PiloTarn_SchedulePlugin)

using namespace Qt::StringLiterals;

// The schedule drawn offscreen over the demo workspace: the week's events
// placed on their days and moved a week at a time by keyboard; booking links
// made, refused and copied.
class TestScheduleScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void weeksMoveByKeyboard();
    void linksMadeAndCopied();
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
    std::unique_ptr<NativeScheduleView> view;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestScheduleScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    view = std::make_unique<NativeScheduleView>(client.as(u"maren@halvard.example"_s));
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Schedule\nScheduleScreen { width: 1100; height: 800 }", QUrl());
    QSignalSpy refreshed(view.get(), &NativeScheduleView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(view.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(view->errorText(), QString());
}

void TestScheduleScreen::cleanupTestCase()
{
    screen.reset();
}

void TestScheduleScreen::weeksMoveByKeyboard()
{
    QCOMPARE(view->days()->rowCount(), 7);
    QVERIFY(view->eventCount() > 5);
    QVERIFY(view->thisWeekShown());
    // Every timed event drawn lies inside its day's column, below its start hour.
    QTRY_VERIFY(!shown(u"calendarEvent"_s).isEmpty());
    for (QQuickItem *block : shown(u"calendarEvent"_s)) {
        QQuickItem *day = block->parentItem();
        QVERIFY(block->x() >= 0 && block->x() + block->width() <= day->width());
        QVERIFY(block->y() >= 0 && block->y() + block->height() <= day->height());
    }

    const QString thisWeek = view->weekLabel();
    QSignalSpy events(view.get(), &NativeScheduleView::eventsChanged);
    QTest::keyClick(&window, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(view->monday(), ScheduleRules::weekStart(QDate::currentDate()).addDays(7));
    QVERIFY(view->weekLabel() != thisWeek);
    QVERIFY(!view->thisWeekShown());
    QTRY_VERIFY(view->eventCount() > 0);
    QTest::keyClick(&window, Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(view->weekLabel(), thisWeek);
    QTRY_VERIFY(view->eventCount() > 5);
}

void TestScheduleScreen::linksMadeAndCopied()
{
    screen->setProperty("section", u"Booking links"_s);
    QTRY_VERIFY(!shown(u"linkRow"_s).isEmpty());
    const int before = view->links()->rowCount();

    view->createLink(u"Intro"_s, 5);
    QCOMPARE(view->errorText(), u"A booking lasts from 15 minutes to 4 hours."_s);
    QCOMPARE(view->links()->rowCount(), before);

    QSignalSpy created(view.get(), &NativeScheduleView::linkCreated);
    view->createLink(u"Site visit"_s, 90);
    QVERIFY(created.wait());
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->links()->rowCount(), before + 1);
    const TarnBookingLink made = view->links()->rows().constFirst();
    QCOMPARE(made.title, u"Site visit"_s);

    view->copyLink(made.id);
    QCOMPARE(QGuiApplication::clipboard()->text(), made.url);
    QCOMPARE(view->notice(), u"Link copied"_s);

    // A booked link opens its bookings, soonest first.
    const auto booked = std::find_if(view->links()->rows().begin(), view->links()->rows().end(),
        [](const TarnBookingLink &link) { return link.bookings > 0; });
    QVERIFY(booked != view->links()->rows().end());
    view->openLink(booked->id);
    QTRY_COMPARE(view->bookings()->rowCount(), int(booked->bookings));
    QTRY_COMPARE(shown(u"bookingRow"_s).size(), int(booked->bookings));
}

QTEST_MAIN(TestScheduleScreen)
#include "tst_schedulescreen.moc"
