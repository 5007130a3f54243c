#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "mail/TarnMailCalls.h"
#include "screens/schedule/ScheduleRules.h"
#include "screens/schedule/TarnScheduleCalls.h"
#include "support/FailureOf.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

struct AccessRow {
    QString email;
    bool opens;
};

struct GoogleRow {
    QString email;
    QString title;
    int startHour; // of the day after tomorrow, UTC
    int hours;
    QString refusal; // empty: made
};

struct PageAnswer {
    int status = 0;
    QString html;

    [[nodiscard]] QString field(const QString &name) const
    {
        const QRegularExpression value(u"name=\"%1\" value=\"([^\"]*)\""_s.arg(name));
        return value.match(html).captured(1);
    }
};

struct LinkRow {
    QString title;
    qint64 duration;
    QString refusal; // empty: made
};

} // namespace

Q_DECLARE_METATYPE(AccessRow)
Q_DECLARE_METATYPE(LinkRow)
Q_DECLARE_METATYPE(GoogleRow)

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
    void googleCalendar_data();
    void googleCalendar();
    void bookedThroughThePage();

private:
    PageAnswer page(const QString &url, const QList<std::pair<QString, QString>> &form = {});

    InboxTestClient client;
    QNetworkAccessManager network;
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
    QVERIFY2(made.url.startsWith(client.workspace->url().toString() + u"book/quick-chat-"_s), qPrintable(made.url));
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

void TestScheduleCalls::googleCalendar_data()
{
    QTest::addColumn<GoogleRow>("row");
    QTest::addRow("made") << GoogleRow { maren, u"Dentist"_s, 8, 1, {} };
    QTest::addRow("no title") << GoogleRow { maren, u" "_s, 8, 1, u"An event's title is 1 to 100 characters."_s };
    QTest::addRow("ends before it starts")
        << GoogleRow { maren, u"Dentist"_s, 9, -1, u"An event ends after it starts, within a day."_s };
    QTest::addRow("longer than a day") << GoogleRow { maren, u"Retreat"_s, 9, 30,
        u"An event ends after it starts, within a day."_s };
    QTest::addRow("mailbox without the calendar")
        << GoogleRow { tomas, u"Dentist"_s, 8, 1, u"Google Calendar is not connected."_s };
    QTest::addRow("no mailbox") << GoogleRow { u"jonah@halvard.example"_s, u"Dentist"_s, 8, 1,
        u"Connect your Google mailbox first."_s };
}

void TestScheduleCalls::googleCalendar()
{
    QFETCH(GoogleRow, row);
    TarnAPI &api = client.as(row.email);
    const QDateTime start(QDate::currentDate().addDays(2), QTime(row.startHour, 0), QTimeZone::utc());
    const TarnCalendarEventDraft draft { .title = row.title,
        .start_at = start.toString(Qt::ISODate),
        .end_at = start.addSecs(row.hours * 3600).toString(Qt::ISODate),
        .location = u"Harbour Street 4"_s };
    const QDateTime from = start.addDays(-14);
    const QDateTime to = start.addDays(14);
    if (!row.refusal.isEmpty()) {
        QCOMPARE(failureOf(TarnScheduleCalls::createGoogleEvent(api, draft)), row.refusal);
        if (row.email != maren)
            QCOMPARE(failureOf(TarnScheduleCalls::googleEvents(api, from, to)), row.refusal);
        return;
    }
    const TarnMailStatus status = tarnWaitFor(TarnMailCalls::status(api));
    QVERIFY(status.calendar);
    const TarnCalendarEvent made = tarnWaitFor(TarnScheduleCalls::createGoogleEvent(api, draft));
    QCOMPARE(made.title, row.title);
    QCOMPARE(made.calendar, u"google"_s);
    QCOMPARE(QDateTime::fromString(made.start_at, Qt::ISODate), start);

    // The demo's Google events and the new one, all in range, none of the workspace's.
    const QList<TarnCalendarEvent> events = tarnWaitFor(TarnScheduleCalls::googleEvents(api, from, to)).events;
    QVERIFY(events.size() > 5);
    QVERIFY(events.contains(made));
    for (const TarnCalendarEvent &event : events) {
        QCOMPARE(event.calendar, u"google"_s);
        QVERIFY(QDateTime::fromString(event.end_at, Qt::ISODate) > from);
        QVERIFY(QDateTime::fromString(event.start_at, Qt::ISODate) < to);
    }
    QCOMPARE(failureOf(TarnScheduleCalls::googleEvents(api, to, from)),
        u"A range ends after it starts and spans at most 62 days."_s);
}

PageAnswer TestScheduleCalls::page(const QString &url, const QList<std::pair<QString, QString>> &form)
{
    QNetworkRequest request { QUrl(url) };
    request.setSslConfiguration(client.workspace->sslConfiguration());
    QUrlQuery body;
    for (const auto &[key, value] : form)
        body.addQueryItem(key, QString::fromLatin1(QUrl::toPercentEncoding(value)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/x-www-form-urlencoded"_s);
    std::unique_ptr<QNetworkReply> reply(
        form.isEmpty() ? network.get(request) : network.post(request, body.toString(QUrl::FullyEncoded).toUtf8()));
    QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    if (!reply->isFinished())
        finished.wait(10'000);
    return { reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), QString::fromUtf8(reply->readAll()) };
}

void TestScheduleCalls::bookedThroughThePage()
{
    TarnAPI &api = client.as(maren);
    const TarnBookingLinkDraft draft { .title = u"Site visit"_s, .duration = 60 };
    const TarnBookingLink link = tarnWaitFor(TarnScheduleCalls::createBookingLink(api, draft));
    const PageAnswer shown = page(link.url);
    QCOMPARE(shown.status, 200);
    QVERIFY(shown.html.contains(u"Site visit"_s));
    const QString start = shown.field(u"start"_s);
    const QString token = shown.field(u"token"_s);
    QVERIFY2(!start.isEmpty() && !token.isEmpty(), qPrintable(shown.html));

    // Bad input is refused, keeping what was typed.
    const PageAnswer refused = page(link.url,
        { { u"token"_s, token }, { u"start"_s, start }, { u"name"_s, u"Ada <Lovelace>"_s }, { u"email"_s, u"ada"_s } });
    QCOMPARE(refused.status, 400);
    QVERIFY(refused.html.contains(u"Write an email address"_s));
    QVERIFY(refused.html.contains(u"value=\"Ada &lt;Lovelace&gt;\""_s));

    // The same form posted twice books once.
    const QList<std::pair<QString, QString>> form { { u"token"_s, token }, { u"start"_s, start },
        { u"name"_s, u"Ada Lovelace"_s }, { u"email"_s, u"ada@engine.example"_s }, { u"note"_s, u"Gate code 42"_s } };
    const PageAnswer booked = page(link.url, form);
    QCOMPARE(booked.status, 200);
    QVERIFY2(booked.html.contains(u"is booked for"_s), qPrintable(booked.html));
    QCOMPARE(page(link.url, form).html, booked.html);
    const QList<TarnBooking> bookings = tarnWaitFor(TarnScheduleCalls::bookingLinkBookings(api, link.id));
    QCOMPARE(bookings.size(), 1);
    QCOMPARE(bookings.constFirst().note, u"Gate code 42"_s);

    // Another client's form for the same time finds it taken, with the times left.
    const PageAnswer later = page(link.url);
    QVERIFY(!later.html.contains(start));
    const PageAnswer taken = page(link.url,
        { { u"token"_s, later.field(u"token"_s) }, { u"start"_s, start }, { u"name"_s, u"Bo"_s },
            { u"email"_s, u"bo@example.com"_s } });
    QCOMPARE(taken.status, 409);
    QVERIFY(taken.html.contains(u"taken in the meantime"_s));
    QVERIFY(taken.html.contains(later.field(u"start"_s)));

    // The booking is an event of the owner's at once.
    const QDateTime at = QDateTime::fromString(start, Qt::ISODate);
    const QList<TarnCalendarEvent> events
        = tarnWaitFor(TarnScheduleCalls::calendarEvents(api, at.addSecs(-60), at.addSecs(60)));
    QVERIFY(std::any_of(events.begin(), events.end(), [&](const TarnCalendarEvent &event) {
        return event.kind == "booking"_L1 && event.title.startsWith(u"Ada Lovelace"_s);
    }));
}

QTEST_GUILESS_MAIN(TestScheduleCalls)
#include "tst_schedulecalls.moc"
