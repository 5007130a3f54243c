#include "TarnWaitFor.h"
#include "app/NativeActivityWatch.h"
#include "app/NativeDesktopNotifier.h"
#include "app/NativeLauncherBadge.h"
#include "app/NativeUnreadCount.h"
#include "chat/TarnChatCalls.h"
#include "chat/TarnChatPerson.h"
#include "inbox/InboxTestClient.h"
#include "inbox/TarnInboxCalls.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The counts the badge announced on the private session bus.
class BadgeCounts : public QObject {
    Q_OBJECT

public:
    QList<qint64> counts;

public slots:
    void update(const QDBusMessage &message)
    {
        counts.append(qdbus_cast<QVariantMap>(message.arguments().value(1)).value(u"count"_s).toLongLong());
    }
};

// A notification server of the test's own, on a connection of its own.
class FakeNotifications : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Shown {
        QString summary, body;
        QStringList actions;
        QVariantMap hints;
    };
    QList<Shown> shown;
    QList<uint> closed;
    QDBusConnection server = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"notifications"_s);

    ~FakeNotifications() override { QDBusConnection::disconnectFromBus(u"notifications"_s); }
    [[nodiscard]] bool serving()
    {
        return server.registerObject(QString::fromLatin1(NativeDesktopNotifier::path), this,
                   QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals)
            && server.registerService(QString::fromLatin1(NativeDesktopNotifier::service));
    }

public slots:
    uint Notify(const QString &, uint, const QString &, const QString &summary, const QString &body,
        const QStringList &actions, const QVariantMap &hints, int)
    {
        shown.append({ summary, body, actions, hints });
        return uint(shown.size());
    }
    void CloseNotification(uint id) { closed.append(id); }
};

// An inbound text from `address`, its thread in front or not, notifications wanted or not.
struct SeenRow {
    QString address;
    bool inFront;
    bool wanted;
};

} // namespace

// The launcher badge fed by the one unread count, which the watch keeps
// from the inbox and the chat over the demo workspace, and the desktop
// notifications it raises for inbox notifications.
class TestActivityWatch : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void countsInboxAndChatUntilSignOut();
    void noInboxCountsNothingThere();
    void inboxNotificationUntilSeen_data();
    void inboxNotificationUntilSeen();
    void withdrawnBeforeItsId();
    void chatMessagesForThePerson();
    void mentions_data();
    void mentions();

private:
    void post(const QByteArray &path, const QJsonObject &body)
    {
        QCOMPARE(client.workspace->send("POST", QString::fromLatin1(path), QJsonDocument(body).toJson()).status, 200);
    }

    InboxTestClient client;
};

void TestActivityWatch::initTestCase()
{
    QCOMPARE(client.start(), QString());
}

void TestActivityWatch::countsInboxAndChatUntilSignOut()
{
    BadgeCounts shown;
    QVERIFY(QDBusConnection::sessionBus().connect(QString(), QString::fromLatin1(NativeLauncherBadge::objectPath),
        QString::fromLatin1(NativeLauncherBadge::interface), u"Update"_s, &shown, SLOT(update(QDBusMessage))));
    TarnAPI &api = client.as(u"maren@halvard.example"_s);
    NativeUnreadCount unread;
    NativeLauncherBadge badge(u"pilo-tarn.desktop"_s);
    connect(&unread, &NativeUnreadCount::totalChanged, &unread, [&badge](qint64 total) { badge.setCount(total); });
    NativeActivityWatch watch(api, unread);
    QSignalSpy refreshed(&watch, &NativeActivityWatch::refreshed);

    watch.start();
    QVERIFY(refreshed.wait());
    QCOMPARE(unread.inboxWaiting(), 6);
    const qint64 chat = unread.chatUnread();
    QTRY_COMPARE(shown.counts.value(shown.counts.size() - 1, -1), 6 + chat);

    post("api/test/inbox/inbound", { { u"customer_address"_s, u"+1 555 0801"_s }, { u"body"_s, u"Hi"_s } });
    post("api/test/inbox/inbound", { { u"customer_address"_s, u"+1 555 0802"_s }, { u"body"_s, u"Hello"_s } });
    const QString room = tarnWaitFor(TarnChatCalls::rooms(api)).constFirst().id;
    post("api/test/rooms/" + room.toUtf8() + "/messages", { { u"user_id"_s, u"p-tomas"_s }, { u"body"_s, u"New"_s } });
    watch.refresh();
    QVERIFY(refreshed.wait());
    QCOMPARE(unread.inboxWaiting(), 8);
    QCOMPARE(unread.chatUnread(), chat + 1);
    QTRY_COMPARE(shown.counts.value(shown.counts.size() - 1, -1), 9 + chat);

    watch.stop();
    QCOMPARE(unread.total(), 0);
    QTRY_COMPARE(shown.counts.value(shown.counts.size() - 1, -1), 0);
}

void TestActivityWatch::noInboxCountsNothingThere()
{
    NativeUnreadCount unread;
    unread.setInboxWaiting(4);
    // Sam may not open the inbox: the refusal counts as nothing waiting.
    NativeActivityWatch watch(client.as(u"sam@halvard.example"_s), unread);
    QSignalSpy refreshed(&watch, &NativeActivityWatch::refreshed);
    watch.refresh();
    QVERIFY(refreshed.wait());
    QCOMPARE(unread.inboxWaiting(), 0);
}

void TestActivityWatch::inboxNotificationUntilSeen_data()
{
    QTest::addColumn<SeenRow>("row");
    QTest::addRow("elsewhere, then seen") << SeenRow { u"+1 555 0701"_s, false, true };
    QTest::addRow("its thread in front") << SeenRow { u"+1 555 0702"_s, true, true };
    QTest::addRow("turned off") << SeenRow { u"+1 555 0703"_s, false, false };
}

void TestActivityWatch::inboxNotificationUntilSeen()
{
    QFETCH(SeenRow, row);
    FakeNotifications fake;
    QVERIFY(fake.serving());

    TarnAPI &api = client.as(u"jonah@halvard.example"_s);
    // Only this row's notification is pending.
    for (const TarnInboxNotification &earlier : tarnWaitFor(TarnInboxCalls::inboxNotifications(api)))
        tarnWaitFor(TarnInboxCalls::dismissInboxNotification(api, earlier.entry_id));
    NativeUnreadCount unread;
    NativeActivityWatch watch(api, unread);
    NativeDesktopNotifier notifier(u"pilo-tarn"_s);
    watch.setNotifications(&notifier, [&row] { return row.wanted; });
    QSignalSpy refreshed(&watch, &NativeActivityWatch::refreshed);
    const TestWorkspace::Answer arrived = client.workspace->send("POST", u"api/test/inbox/inbound"_s,
        QJsonDocument(QJsonObject { { u"customer_address"_s, row.address }, { u"body"_s, u"Are you open today?"_s } })
            .toJson());
    const QString thread = u"inbox:"_s + arrived.json().value("id"_L1).toString();
    watch.setInFront(row.inFront ? thread : u"chat:elsewhere"_s);

    watch.refresh();
    QVERIFY(refreshed.wait());
    watch.refresh();
    QVERIFY(refreshed.wait());
    // Raised once at most; only a raised one is still held on the service.
    const bool raised = !row.inFront && row.wanted;
    QTRY_COMPARE(fake.shown.size(), raised ? 1 : 0);
    QCOMPARE(tarnWaitFor(TarnInboxCalls::inboxNotifications(api)).size(), raised ? 1 : 0);
    if (!raised)
        return;
    const FakeNotifications::Shown &shown = fake.shown.constFirst();
    QCOMPARE(shown.summary, u"New customer message"_s);
    QCOMPARE(shown.body, u"Are you open today?"_s);
    QCOMPARE(shown.actions, QStringList({ u"default"_s, u"Open"_s }));
    QCOMPARE(shown.hints.value(u"desktop-entry"_s).toString(), u"pilo-tarn"_s);
    QCOMPARE(shown.hints.value(u"category"_s).toString(), u"im.received"_s);

    // Choosing it asks for its thread.
    QSignalSpy activated(&notifier, &NativeDesktopNotifier::activated);
    QDBusMessage invoked = QDBusMessage::createSignal(QString::fromLatin1(NativeDesktopNotifier::path),
        QString::fromLatin1(NativeDesktopNotifier::interface), u"ActionInvoked"_s);
    invoked << 1U << u"default"_s;
    fake.server.send(invoked);
    QVERIFY(activated.wait());
    QCOMPARE(activated.constFirst().constFirst().toString(), thread);

    // Seeing the thread closes it on the desktop and dismisses it on the service.
    watch.setInFront(thread);
    QTRY_COMPARE(fake.closed, QList<uint> { 1 });
    QTRY_VERIFY(tarnWaitFor(TarnInboxCalls::inboxNotifications(api)).isEmpty());
}

void TestActivityWatch::withdrawnBeforeItsId()
{
    FakeNotifications fake;
    QVERIFY(fake.serving());
    NativeDesktopNotifier notifier(u"pilo-tarn"_s);
    // Seen, or signed out, before the desktop answered: closed once it does.
    notifier.notify(u"Lena"_s, u"Hi"_s, u"inbox:t-1"_s);
    notifier.notify(u"Tomas"_s, u"Lunch?"_s, u"chat:r-1"_s);
    notifier.withdraw(u"inbox:t-1"_s);
    notifier.notify(u"Lena"_s, u"Still there?"_s, u"inbox:t-1"_s);
    QTRY_COMPARE(fake.shown.size(), 3);
    QTRY_COMPARE(fake.closed, QList<uint> { 1 });
    notifier.withdraw();
    QTRY_COMPARE(fake.closed.size(), 3);
}

void TestActivityWatch::chatMessagesForThePerson()
{
    FakeNotifications fake;
    QVERIFY(fake.serving());

    TarnAPI &api = client.as(u"maren@halvard.example"_s);
    NativeUnreadCount unread;
    NativeActivityWatch watch(api, unread);
    NativeDesktopNotifier notifier(u"pilo-tarn"_s);
    watch.setNotifications(&notifier, {});
    QSignalSpy refreshed(&watch, &NativeActivityWatch::refreshed);
    watch.refresh();
    QVERIFY(refreshed.wait());
    const int before = int(fake.shown.size());

    QString direct, channel, partner;
    for (const TarnRoom &room : tarnWaitFor(TarnChatCalls::rooms(api))) {
        if (room.kind == "dm"_L1 && direct.isEmpty()) {
            direct = room.id;
            partner = room.name;
        } else if (room.name == "general"_L1) {
            channel = room.id;
        }
    }
    QString partnerId;
    for (const TarnChatPerson &person : tarnWaitFor(TarnChatCalls::team(api)))
        if (person.name == partner)
            partnerId = person.id;
    const auto say = [&](const QString &room, const QString &who, const QString &body) {
        post("api/test/rooms/" + room.toUtf8() + "/messages", { { u"user_id"_s, who }, { u"body"_s, body } });
    };
    say(direct, partnerId, u"Lunch?"_s);
    say(channel, u"p-tomas"_s, u"Stand-up moved to ten"_s);
    say(channel, u"p-tomas"_s, u"@Maren the proofs are in"_s);
    watch.refresh();
    QVERIFY(refreshed.wait());
    QTRY_COMPARE(fake.shown.size(), before + 2);
    QStringList shown;
    for (qsizetype i = before; i < fake.shown.size(); ++i)
        shown.append(fake.shown.at(i).summary + u": "_s + fake.shown.at(i).body);
    QStringList expected { partner + u": Lunch?"_s, u"Tomas Reyes in #general: @Maren the proofs are in"_s };
    shown.sort();
    expected.sort();
    QCOMPARE(shown, expected);
}

void TestActivityWatch::mentions_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<bool>("named");
    QTest::addRow("first name") << u"@Maren can you look?"_s << true;
    QTest::addRow("any case, at the end") << u"thanks @maren"_s << true;
    QTest::addRow("full name") << u"cc @Maren Holt."_s << true;
    QTest::addRow("a longer name") << u"@Marenka said so"_s << false;
    QTest::addRow("an address") << u"write to maren@halvard.example"_s << false;
    QTest::addRow("no at sign") << u"Maren will know"_s << false;
}

void TestActivityWatch::mentions()
{
    QFETCH(QString, body);
    QFETCH(bool, named);
    QCOMPARE(NativeActivityWatch::mentions(body, u"Maren Holt"_s), named);
}

QTEST_GUILESS_MAIN(TestActivityWatch)
#include "tst_activitywatch.moc"
