#include "inbox/InboxTestClient.h"
#include "screens/schedule/NativeScheduleView.h"
#include "screens/schedule/ScheduleRules.h"
#include "support/TestScreenHost.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSet>
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
    void monthChosenAndRemembered();
    void eventsOfBothCalendars();
    void cleanupTestCase();

private:
    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeScheduleView> view;
    TestScreenHost host;
};

void TestScheduleScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    view = std::make_unique<NativeScheduleView>(client.as(u"maren@halvard.example"_s), *settings);
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

void TestScheduleScreen::monthChosenAndRemembered()
{
    host.screen()->setProperty("section", u"Calendar"_s);
    host.click(host.shown(u"scheduleMonthMode"_s).constFirst());
    QCOMPARE(view->mode(), u"Month"_s);
    QCOMPARE(view->monthFirst(), ScheduleRules::monthStart(QDate::currentDate()));
    QCOMPARE(view->month()->rowCount(), ScheduleRules::monthGridDays);
    // The six weeks are read in one request, this week's demo events among them.
    QTRY_VERIFY(view->eventCount() > 5);
    QTRY_COMPARE(host.shown(u"monthDay"_s).size(), ScheduleRules::monthGridDays);
    const QList<ScheduleMonthDay> grid = view->month()->rows();
    QCOMPARE(std::count_if(grid.begin(), grid.end(), [](const ScheduleMonthDay &d) { return d.today; }), 1);
    QVERIFY(std::any_of(grid.begin(), grid.end(), [](const ScheduleMonthDay &d) { return d.count > 0; }));

    // The choice outlives the state.
    QCOMPARE(NativeScheduleView(client.as(u"maren@halvard.example"_s), *settings).mode(), u"Month"_s);

    QTest::keyClick(&host.window, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(view->monthFirst(), ScheduleRules::monthStart(QDate::currentDate()).addMonths(1));
    QVERIFY(!view->thisMonthShown());
    QTest::keyClick(&host.window, Qt::Key_Home, Qt::AltModifier);
    QVERIFY(view->thisMonthShown());
    QTRY_VERIFY(view->eventCount() > 5);

    // Choosing a day opens its week.
    QQuickItem *last = host.shown(u"monthDay"_s).constLast();
    const QDate lastDay = QDate::fromString(view->month()->rows().constLast().date, Qt::ISODate);
    host.click(last);
    QCOMPARE(view->mode(), u"Week"_s);
    QCOMPARE(view->monday(), ScheduleRules::weekStart(lastDay));
    QTRY_VERIFY(!host.shown(u"calendarWeek"_s).isEmpty());
}

void TestScheduleScreen::eventsOfBothCalendars()
{
    QVERIFY(view->googleConnected());
    QCOMPARE(view->calendarNote(), QString());
    const auto calendarsShown = [this] {
        QSet<QString> calendars;
        for (const ScheduleDay &day : view->days()->rows()) {
            for (const QVariant &event : day.events)
                calendars.insert(event.toMap().value(u"calendar"_s).toString());
        }
        return calendars;
    };
    view->thisWeek();
    QTRY_COMPARE(calendarsShown(), (QSet<QString> { u"workspace"_s, u"google"_s }));

    // A new event is checked here first, then lands in the Google calendar.
    QTest::keyClick(&host.window, Qt::Key_N, Qt::ControlModifier);
    QTRY_VERIFY(!host.shown(u"eventTitle"_s).isEmpty());
    view->createEvent(u"Dentist"_s, view->suggestedDay(), u"18:00"_s, u"17:00"_s, {});
    QCOMPARE(view->errorText(), u"The event ends after it starts, on the same day."_s);
    QSignalSpy created(view.get(), &NativeScheduleView::eventCreated);
    view->createEvent(u"Dentist"_s, view->suggestedDay(), u"17:00"_s, u"17:45"_s, u"Harbour Street 4"_s);
    QVERIFY(created.wait());
    QCOMPARE(view->errorText(), QString());
    QTRY_VERIFY(host.shown(u"eventTitle"_s).isEmpty());
    const auto dentist = [this] {
        for (const ScheduleDay &day : view->days()->rows()) {
            for (const QVariant &event : day.events) {
                if (event.toMap().value(u"title"_s) == u"Dentist"_s)
                    return event.toMap().value(u"calendar"_s).toString();
            }
        }
        return QString();
    };
    QTRY_COMPARE(dentist(), u"google"_s);

    // Without a granted calendar: said once, the workspace's events only.
    NativeScheduleView his(client.as(u"tomas@halvard.example"_s), *settings);
    QSignalSpy refreshed(&his, &NativeScheduleView::refreshed);
    his.appear();
    QVERIFY(refreshed.wait(10'000));
    QVERIFY(!his.googleConnected());
    QVERIFY(his.calendarNote().startsWith(u"Google Calendar is not connected"_s));
    QVERIFY(his.eventCount() > 0);
    his.createEvent(u"Dentist"_s, his.suggestedDay(), u"17:00"_s, u"17:45"_s, {});
    QCOMPARE(his.errorText(), u"Connect Google Calendar to add events."_s);
    his.disappear();
}

QTEST_MAIN(TestScheduleScreen)
#include "tst_schedulescreen.moc"
