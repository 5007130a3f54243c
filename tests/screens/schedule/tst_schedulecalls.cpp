#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/schedule/ScheduleRules.h"
#include "screens/schedule/TarnScheduleCalls.h"
#include "support/FailureOf.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

struct AccessRow {
    QString email;
    bool opens;
};

struct LinkRow {
    QString title;
    qint64 duration;
    QString refusal; // empty: made
};

} // namespace

Q_DECLARE_METATYPE(AccessRow)
Q_DECLARE_METATYPE(LinkRow)

// The calendar and booking links against the local workspace and its demo.
class TestScheduleCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void gatedByTheScheduleApp_data();
    void gatedByTheScheduleApp();
    void weekOfEvents();
    void newLinks_data();
    void newLinks();
    void bookingsAreTheOwnersOnly();

private:
    InboxTestClient client;
};

void TestScheduleCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestScheduleCalls::gatedByTheScheduleApp_data()
{
    QTest::addColumn<AccessRow>("row");
    QTest::addRow("owner") << AccessRow { maren, true };
    QTest::addRow("with the app") << AccessRow { u"sam@halvard.example"_s, true };
    QTest::addRow("without it") << AccessRow { u"jonah@halvard.example"_s, false };
}

void TestScheduleCalls::gatedByTheScheduleApp()
{
    QFETCH(AccessRow, row);
    const QString failure = failureOf(TarnScheduleCalls::bookingLinks(client.as(row.email)));
    QCOMPARE(failure.isEmpty(), row.opens);
    if (!row.opens)
        QCOMPARE(failure, u"The calendar is not open to you."_s);
}

void TestScheduleCalls::weekOfEvents()
{
    const auto [from, to]
        = ScheduleRules::weekRange(ScheduleRules::weekStart(QDate::currentDate()), QTimeZone::systemTimeZone());
    const QList<TarnCalendarEvent> events = tarnWaitFor(TarnScheduleCalls::calendarEvents(client.as(maren), from, to));
    QVERIFY(events.size() > 5);
    QString previous;
    for (const TarnCalendarEvent &event : events) {
        const QDateTime start = QDateTime::fromString(event.start_at, Qt::ISODateWithMs);
        const QDateTime end = QDateTime::fromString(event.end_at, Qt::ISODateWithMs);
        QVERIFY2(end > from && start < to, qPrintable(event.title));
        QVERIFY(event.start_at >= previous);
        previous = event.start_at;
    }
    // Clients' bookings on her links are events of hers; Tomas's are not.
    const auto bookings = std::count_if(
        events.begin(), events.end(), [](const TarnCalendarEvent &e) { return e.kind == "booking"_L1; });
    const QList<TarnCalendarEvent> his = tarnWaitFor(TarnScheduleCalls::calendarEvents(client.as(tomas), from, to));
    for (const TarnCalendarEvent &event : his)
        QVERIFY(!events.contains(event));
    QVERIFY(bookings + std::count_if(his.begin(), his.end(), [](const TarnCalendarEvent &e) {
        return e.kind == "booking"_L1;
    }) > 0);

    QCOMPARE(failureOf(TarnScheduleCalls::calendarEvents(client.as(maren), to, from)),
        u"A range ends after it starts and spans at most 62 days."_s);
    QCOMPARE(failureOf(TarnScheduleCalls::calendarEvents(client.as(maren), from, from.addDays(90))),
        u"A range ends after it starts and spans at most 62 days."_s);
}

void TestScheduleCalls::newLinks_data()
{
    QTest::addColumn<LinkRow>("row");
    QTest::addRow("made") << LinkRow { u"  Quick   chat "_s, 15, {} };
    QTest::addRow("too short") << LinkRow { u"Hello"_s, 5, u"A booking lasts from 15 minutes to 4 hours."_s };
    QTest::addRow("too long") << LinkRow { u"Workshop"_s, 300, u"A booking lasts from 15 minutes to 4 hours."_s };
    QTest::addRow("no title") << LinkRow { u"   "_s, 30, u"A link's title is 1 to 100 characters."_s };
}

void TestScheduleCalls::newLinks()
{
    QFETCH(LinkRow, row);
    TarnAPI &api = client.as(u"priya@halvard.example"_s);
    const TarnBookingLinkDraft draft { .title = row.title, .duration = row.duration };
    if (!row.refusal.isEmpty()) {
        QCOMPARE(failureOf(TarnScheduleCalls::createBookingLink(api, draft)), row.refusal);
        return;
    }
    const TarnBookingLink made = tarnWaitFor(TarnScheduleCalls::createBookingLink(api, draft));
    QCOMPARE(made.title, u"Quick chat"_s);
    QVERIFY2(made.url.startsWith(u"https://book.halvard.example/quick-chat-"_s), qPrintable(made.url));
    QCOMPARE(made.bookings, 0);
    QVERIFY(!made.next_at);
    QCOMPARE(tarnWaitFor(TarnScheduleCalls::bookingLinks(api)).constFirst(), made);
}

void TestScheduleCalls::bookingsAreTheOwnersOnly()
{
    const QList<TarnBookingLink> links = tarnWaitFor(TarnScheduleCalls::bookingLinks(client.as(maren)));
    QVERIFY(!links.isEmpty());
    const auto booked
        = std::find_if(links.begin(), links.end(), [](const TarnBookingLink &link) { return link.bookings > 0; });
    QVERIFY(booked != links.end());
    const QList<TarnBooking> bookings
        = tarnWaitFor(TarnScheduleCalls::bookingLinkBookings(client.as(maren), booked->id));
    QCOMPARE(bookings.size(), booked->bookings);
    QCOMPARE(bookings.constFirst().start_at, *booked->next_at);
    QCOMPARE(
        failureOf(TarnScheduleCalls::bookingLinkBookings(client.as(tomas), booked->id)), u"No such booking link."_s);
}

QTEST_GUILESS_MAIN(TestScheduleCalls)
#include "tst_schedulecalls.moc"
