#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "inbox/TarnInboxCalls.h"
#include "service/TarnAPI.h"
#include "support/FailureOf.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Call = std::function<void(TarnAPI &)>;

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;
const QString priya = u"priya@halvard.example"_s;

template <typename T> void attempt(QCoro::Task<T> task)
{
    (void)failureOf(std::move(task));
}

const QString oddId = u"t&=+#?/ é"_s;
const QString oddIdSent = u"t%26%3D%2B%23%3F%2F%20%C3%A9"_s;

QStringList addresses(const TarnInboxList &list)
{
    QStringList out;
    for (const TarnInboxThreadSummary &thread : list.threads)
        out.append(thread.customer_address);
    std::sort(out.begin(), out.end());
    return out;
}

} // namespace

// The inbox calls against the local workspace and its demo threads: the
// wire form, the filters, the actions, retried replies, two people at once.
class TestInboxCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void wireForm_data();
    void wireForm();
    void filters_data();
    void filters();
    void actionsChangeTheThread();
    void assignAndSnoozeAtOnce();
    void assistantDraftsFromTheThread();
    void customersAndConversations();
    void notificationsUntilDismissed();
    void onlyTheAuthorDiscardsADraft();

private:
    // A fresh thread from an inbound text, and its id.
    [[nodiscard]] QString inbound(const QString &address, const QString &body = u"Hello?"_s);

    InboxTestClient client;
    // Left as the demo planted it, for the filters.
    InboxTestClient demo;
};

void TestInboxCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QCOMPARE(demo.start(), QString());
}

QString TestInboxCalls::inbound(const QString &address, const QString &body)
{
    const TestWorkspace::Answer answer = client.workspace->send("POST", u"api/test/inbox/inbound"_s,
        QJsonDocument(QJsonObject { { u"customer_address"_s, address }, { u"body"_s, body } }).toJson());
    return answer.json().value("id"_L1).toString();
}

void TestInboxCalls::wireForm_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("query");
    QTest::addColumn<QJsonObject>("body");

    const QString thread = u"/api/inbox/"_s + oddIdSent;
    const struct {
        const char *label;
        Call call;
        QString path;
        QString query;
        QJsonObject body;
    } rows[] {
        { "list, values escaped", [](TarnAPI &a) { attempt(TarnInboxCalls::inbox(a, u"all"_s, u"open"_s, u"a&b"_s)); },
            u"/api/inbox"_s, u"scope=all&view=open&kind=a%26b"_s, {} },
        { "thread", [](TarnAPI &a) { attempt(TarnInboxCalls::inboxThread(a, oddId)); }, thread, {}, {} },
        { "reply",
            [](TarnAPI &a) {
                attempt(TarnInboxCalls::inboxAction(a, oddId, TarnInboxAction::reply(u"Hi"_s, u"n1"_s, { u"p-x"_s })));
            },
            thread + u"/reply"_s, {},
            { { u"body"_s, u"Hi"_s }, { u"nonce"_s, u"n1"_s }, { u"mentions"_s, QJsonArray { u"p-x"_s } } } },
        { "clear", [](TarnAPI &a) { attempt(TarnInboxCalls::inboxAction(a, oddId, TarnInboxAction::clear())); },
            thread + u"/clear"_s, {}, {} },
        { "assist", [](TarnAPI &a) { attempt(TarnInboxCalls::inboxAssist(a, oddId, u"so far"_s)); },
            thread + u"/assist"_s, {}, { { u"draft"_s, u"so far"_s } } },
        { "create customer",
            [](TarnAPI &a) { attempt(TarnInboxCalls::inboxCreateCustomer(a, oddId, u"customers"_s, u"Lena"_s)); },
            thread + u"/create-customer"_s, {}, { { u"board_id"_s, u"customers"_s }, { u"name"_s, u"Lena"_s } } },
        { "new conversation",
            [](TarnAPI &a) { attempt(TarnInboxCalls::newInboxConversation(a, u"c-1"_s, u"+1 555"_s, u"text"_s)); },
            u"/api/inbox/new"_s, {},
            { { u"kind"_s, u"text"_s }, { u"client_id"_s, u"c-1"_s }, { u"customer_address"_s, u"+1 555"_s } } },
        { "dismiss", [](TarnAPI &a) { attempt(TarnInboxCalls::dismissInboxNotification(a, u"e1"_s)); },
            u"/api/inbox/notifications"_s, {}, { { u"entry_id"_s, u"e1"_s } } },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.call << row.path << row.query << row.body;
}

void TestInboxCalls::wireForm()
{
    QFETCH(Call, call);
    QFETCH(QString, path);
    QFETCH(QString, query);
    QFETCH(QJsonObject, body);

    TarnAPI &api = client.as(maren);
    client.workspace->clearRequests();
    call(api);
    const QJsonArray sent = client.workspace->requests();
    QCOMPARE(sent.size(), 1);
    const QJsonObject request = sent.first().toObject();
    QCOMPARE(
        request.value("method"_L1).toString(), body.isEmpty() && !path.endsWith("clear"_L1) ? u"GET"_s : u"POST"_s);
    QCOMPARE(request.value("path"_L1).toString(), path);
    QCOMPARE(request.value("query"_L1).toString(), query);
    const QByteArray sentBody = request.value("body"_L1).toString().toUtf8();
    QCOMPARE(sentBody.isEmpty() ? QJsonObject() : QJsonDocument::fromJson(sentBody).object(), body);
}

void TestInboxCalls::filters_data()
{
    QTest::addColumn<QString>("scope");
    QTest::addColumn<QString>("view");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("expected");
    // The demo's threads as the owner sees them; Harbor's snooze is already due.
    QTest::addRow("mine open") << u"mine"_s << u"open"_s << u"all"_s
                               << QStringList { u"+1 555 0113"_s, u"+1 555 0117"_s };
    QTest::addRow("unassigned open") << u"unassigned"_s << u"open"_s << u"all"_s
                                     << QStringList { u"+1 555 0111"_s, u"+1 555 0142"_s, u"lena@example.net"_s,
                                            u"team@copperkettle.example"_s };
    QTest::addRow("a due snooze has woken") << u"all"_s << u"snoozed"_s << u"all"_s << QStringList { u"+1 555 0115"_s };
    QTest::addRow("done") << u"all"_s << u"done"_s << u"all"_s
                          << QStringList { u"+1 555 0118"_s, u"office@marlow.example"_s };
    QTest::addRow("one channel") << u"all"_s << u"open"_s << u"email"_s
                                 << QStringList { u"team@copperkettle.example"_s };
    QTest::addRow("no threads, still a count") << u"all"_s << u"open"_s << u"fax"_s << QStringList();
}

void TestInboxCalls::filters()
{
    QFETCH(QString, scope);
    QFETCH(QString, view);
    QFETCH(QString, kind);
    QFETCH(QStringList, expected);
    const TarnInboxList list = tarnWaitFor(TarnInboxCalls::inbox(demo.as(maren), scope, view, kind));
    QCOMPARE(addresses(list), expected);
    // Brightwater, the unknown sender, the web form, Fernhill, Harbor and Copper Kettle.
    QCOMPARE(list.unreplied_count, 6);
}

void TestInboxCalls::actionsChangeTheThread()
{
    TarnAPI &api = client.as(maren);
    const QString id = inbound(u"+1 555 0901"_s);
    const auto act
        = [&](const TarnInboxAction &action) { return failureOf(TarnInboxCalls::inboxAction(api, id, action)); };
    const auto view = [&](const QString &name) {
        return addresses(tarnWaitFor(TarnInboxCalls::inbox(api, u"all"_s, name, u"text"_s))).contains(u"+1 555 0901"_s);
    };

    QCOMPARE(act(TarnInboxAction::assign(u"p-tomas"_s)), QString());
    QCOMPARE(tarnWaitFor(TarnInboxCalls::inboxThread(api, id)).owner_id, u"p-tomas"_s);
    QVERIFY(act(TarnInboxAction::assign(u"p-sam"_s)).contains(u"someone in the inbox"_s));
    QCOMPARE(act(TarnInboxAction::clear()), QString());
    QCOMPARE(tarnWaitFor(TarnInboxCalls::inboxThread(api, id)).owner_id, std::nullopt);

    QVERIFY(act(TarnInboxAction::snooze(u"2001-01-01T08:00:00Z"_s)).contains(u"still to come"_s));
    const QString later = QDateTime::currentDateTimeUtc().addDays(1).toString(Qt::ISODate);
    QCOMPARE(act(TarnInboxAction::snooze(later)), QString());
    QVERIFY(view(u"snoozed"_s) && !view(u"open"_s));
    QCOMPARE(act(TarnInboxAction::done()), QString());
    QVERIFY(view(u"done"_s) && !view(u"snoozed"_s));
    // The customer writing again brings the thread back.
    QCOMPARE(inbound(u"+1 555 0901"_s, u"Anyone there?"_s), id);
    QVERIFY(view(u"open"_s) && !view(u"done"_s));
}

void TestInboxCalls::assignAndSnoozeAtOnce()
{
    const QString id = inbound(u"+1 555 0903"_s);
    const QString later = QDateTime::currentDateTimeUtc().addDays(2).toString(Qt::ISODate);
    // Both leave before either answer is read.
    QCoro::Task<TarnInboxActionResult> assigning
        = TarnInboxCalls::inboxAction(client.as(tomas), id, TarnInboxAction::assign(u"p-tomas"_s));
    QCoro::Task<TarnInboxActionResult> snoozing
        = TarnInboxCalls::inboxAction(client.as(priya), id, TarnInboxAction::snooze(later));
    QCOMPARE(failureOf(std::move(assigning)), QString());
    const QString snoozeFailure = failureOf(std::move(snoozing));

    const TarnInboxThread seen = tarnWaitFor(TarnInboxCalls::inboxThread(client.as(priya), id));
    QCOMPARE(seen.owner_id, u"p-tomas"_s);
    // Either the snooze came first and holds, or it found the thread taken.
    if (snoozeFailure.isEmpty()) {
        QVERIFY(seen.snoozed_until.has_value());
    } else {
        QCOMPARE(snoozeFailure, u"This conversation is assigned to Tomas Reyes."_s);
        QVERIFY(!seen.snoozed_until.has_value());
        QVERIFY(!seen.can_edit);
    }
}

void TestInboxCalls::assistantDraftsFromTheThread()
{
    TarnAPI &api = client.as(maren);
    // The assistant's draft is built from the thread, so it can be checked.
    const QString text = inbound(u"+1 555 0111"_s, u"Is Friday at 9 possible?"_s);
    const TarnInboxAssist assist = tarnWaitFor(TarnInboxCalls::inboxAssist(api, text, u"Yes, 9 works."_s));
    QCOMPARE(assist.draft,
        u"Hi Brightwater Dental, thanks for your message: \"Is Friday at 9 possible?\". Yes, 9 works.\n"
        "Maren, Halvard & Co."_s);
}

void TestInboxCalls::customersAndConversations()
{
    TarnAPI &api = client.as(maren);
    const QString id = inbound(u"+1 555 0904"_s);
    QCOMPARE(tarnWaitFor(TarnInboxCalls::inboxThread(api, id)).client_id, std::nullopt);
    const TarnInboxCustomer customer
        = tarnWaitFor(TarnInboxCalls::inboxCreateCustomer(api, id, u"customers"_s, u"Lena Park"_s));
    const TarnInboxThread linked = tarnWaitFor(TarnInboxCalls::inboxThread(api, id));
    QCOMPARE(linked.client_id, customer.client_id);
    QCOMPARE(linked.client_name, u"Lena Park"_s);
    QVERIFY(failureOf(TarnInboxCalls::inboxCreateCustomer(api, id, u"customers"_s, u"Again"_s)).contains(u"already"_s));

    // The customer's number is found from the record, and their thread reused.
    QCOMPARE(tarnWaitFor(TarnInboxCalls::newInboxConversation(api, customer.client_id, {}, u"text"_s)).id, id);
    const TarnInboxCreated fresh
        = tarnWaitFor(TarnInboxCalls::newInboxConversation(api, {}, u"+1 555 0905"_s, u"text"_s));
    const TarnInboxThread started = tarnWaitFor(TarnInboxCalls::inboxThread(api, fresh.id));
    QVERIFY(started.entries.isEmpty() && started.can_send && !started.ai_configured);
    QCOMPARE(started.owner_id, u"p-maren"_s);
}

void TestInboxCalls::notificationsUntilDismissed()
{
    TarnAPI &api = client.as(priya);
    const QString id = inbound(u"+1 555 0906"_s, u"New order please"_s);
    const auto find = [&] {
        const QList<TarnInboxNotification> all = tarnWaitFor(TarnInboxCalls::inboxNotifications(api));
        const auto it
            = std::find_if(all.begin(), all.end(), [&](const TarnInboxNotification &n) { return n.thread_id == id; });
        return it == all.end() ? std::optional<TarnInboxNotification>() : std::optional(*it);
    };
    const std::optional<TarnInboxNotification> raised = find();
    QVERIFY(raised.has_value());
    QCOMPARE(raised->reason, u"inbound"_s);
    QCOMPARE(raised->body, u"New order please"_s);
    tarnWaitFor(TarnInboxCalls::dismissInboxNotification(api, raised->entry_id));
    QVERIFY(!find().has_value());

    // A mention reaches the one mentioned, not the writer.
    tarnWaitFor(TarnInboxCalls::inboxAction(
        client.as(maren), id, TarnInboxAction::reply(u"@Priya can you take this?"_s, u"n-m"_s, { u"p-priya"_s })));
    QCOMPARE(find().value_or(TarnInboxNotification {}).reason, u"mention"_s);
}

void TestInboxCalls::onlyTheAuthorDiscardsADraft()
{
    const TarnInboxList mine = tarnWaitFor(TarnInboxCalls::inbox(client.as(maren), u"mine"_s, u"open"_s, u"all"_s));
    const auto drafted = std::find_if(mine.threads.begin(), mine.threads.end(),
        [](const TarnInboxThreadSummary &thread) { return thread.preview_draft; });
    QVERIFY(drafted != mine.threads.end());
    const TarnInboxThread thread = tarnWaitFor(TarnInboxCalls::inboxThread(client.as(tomas), drafted->id));
    const TarnInboxEntry draft = thread.entries.last();
    QVERIFY(!draft.can_discard);
    QVERIFY(!failureOf(TarnInboxCalls::inboxAction(client.as(tomas), thread.id, TarnInboxAction::discard(draft.id)))
                 .isEmpty());
    QVERIFY(tarnWaitFor(TarnInboxCalls::inboxThread(client.as(maren), thread.id)).entries.last().can_discard);
    tarnWaitFor(TarnInboxCalls::inboxAction(client.as(maren), thread.id, TarnInboxAction::discard(draft.id)));
    QCOMPARE(tarnWaitFor(TarnInboxCalls::inboxThread(client.as(maren), thread.id)).entries.size(),
        thread.entries.size() - 1);
}

QTEST_GUILESS_MAIN(TestInboxCalls)
#include "tst_inboxcalls.moc"
