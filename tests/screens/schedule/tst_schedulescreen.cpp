#include "inbox/InboxTestClient.h"
#include "screens/schedule/NativeScheduleView.h"
#include "screens/schedule/ScheduleRules.h"
#include "support/TestScreenHost.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
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
    InboxTestClient client;
    std::unique_ptr<NativeScheduleView> view;
    TestScreenHost host;
};

void TestScheduleScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    view = std::make_unique<NativeScheduleView>(client.as(u"maren@halvard.example"_s));
    QSignalSpy refreshed(view.get(), &NativeScheduleView::refreshed);
    QCOMPARE(host.show("import PiloTarn.Schedule\nScheduleScreen {}", u"view"_s, view.get()), QString());
    QVERIFY(refreshed.wait(10'000));
    QCOMPARE(view->errorText(), QString());
}

void TestScheduleScreen::cleanupTestCase()
{
    host.close();
}

void TestScheduleScreen::weeksMoveByKeyboard()
{
    QCOMPARE(view->days()->rowCount(), 7);
    QVERIFY(view->eventCount() > 5);
    QVERIFY(view->thisWeekShown());
    // Every timed event drawn lies inside its day's column, below its start hour.
    QTRY_VERIFY(!host.shown(u"calendarEvent"_s).isEmpty());
    for (QQuickItem *block : host.shown(u"calendarEvent"_s)) {
        QQuickItem *day = block->parentItem();
        QVERIFY(block->x() >= 0 && block->x() + block->width() <= day->width());
        QVERIFY(block->y() >= 0 && block->y() + block->height() <= day->height());
    }

    const QString thisWeek = view->weekLabel();
    QSignalSpy events(view.get(), &NativeScheduleView::eventsChanged);
    QTest::keyClick(&host.window, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(view->monday(), ScheduleRules::weekStart(QDate::currentDate()).addDays(7));
    QVERIFY(view->weekLabel() != thisWeek);
    QVERIFY(!view->thisWeekShown());
    QTRY_VERIFY(view->eventCount() > 0);
    QTest::keyClick(&host.window, Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(view->weekLabel(), thisWeek);
    QTRY_VERIFY(view->eventCount() > 5);
}

void TestScheduleScreen::linksMadeAndCopied()
{
    host.screen()->setProperty("section", u"Booking links"_s);
    QTRY_VERIFY(!host.shown(u"linkRow"_s).isEmpty());
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
    QTRY_COMPARE(host.shown(u"bookingRow"_s).size(), int(booked->bookings));
}

QTEST_MAIN(TestScheduleScreen)
#include "tst_schedulescreen.moc"
