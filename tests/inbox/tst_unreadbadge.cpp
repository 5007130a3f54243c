#include "TarnWaitFor.h"
#include "app/NativeActivityWatch.h"
#include "app/NativeLauncherBadge.h"
#include "app/NativeUnreadCount.h"
#include "chat/TarnChatCalls.h"
#include "inbox/InboxTestClient.h"

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

} // namespace

// The launcher badge fed by the one unread count, which the watch keeps
// from the inbox and the chat over the demo workspace.
class TestUnreadBadge : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void countsInboxAndChatUntilSignOut();
    void noInboxCountsNothingThere();

private:
    void post(const QByteArray &path, const QJsonObject &body)
    {
        QCOMPARE(client.workspace->send("POST", QString::fromLatin1(path), QJsonDocument(body).toJson()).status, 200);
    }

    InboxTestClient client;
};

void TestUnreadBadge::initTestCase()
{
    QCOMPARE(client.start(), QString());
}

void TestUnreadBadge::countsInboxAndChatUntilSignOut()
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

void TestUnreadBadge::noInboxCountsNothingThere()
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

QTEST_GUILESS_MAIN(TestUnreadBadge)
#include "tst_unreadbadge.moc"
