#include "TarnWaitFor.h"
#include "chat/ChatTestClient.h"
#include "chat/TarnChatCalls.h"
#include "service/TarnAPI.h"
#include "support/FailureOf.h"
#include "support/TestWorkspace.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Call = std::function<void(TarnAPI &)>;

// The wire form is what is checked here, so whether the workspace answers
// the call or refuses it does not matter.
template <typename T> void attempt(QCoro::Task<T> task)
{
    try {
        tarnWaitFor(std::move(task));
    } catch (const TarnAPIError &) {
    }
}

// Every character that could end a segment or start a parameter, a space
// and a letter outside ASCII.
const QString oddRoom = u"r&=+#?/ é"_s;
const QString oddRoomSent = u"r%26%3D%2B%23%3F%2F%20%C3%A9"_s;
const QString oddId = u"m:1/2"_s;
const QString oddIdSent = u"m:1%2F2"_s;

const QString tomas = u"p-tomas"_s;

} // namespace

// The chat calls against the local workspace: each call as the workspace
// receives it (method, escaped path and query, body), then what is stored,
// paged, refused and read back.
class TestChatCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void wireForm_data();
    void wireForm();
    void roundTrip_data();
    void roundTrip();
    void pagingBackReachesTheFirstMessage();
    void resentNonceStoresOneMessage();
    void staleVersionsAreRefused();
    void reactionsAndSaves();
    void threadsAndReadMarks();
    void roomsAreUniqueAndPrivate();
    void filesUpToTheLimit();

private:
    [[nodiscard]] QString channel(const QString &name, bool isPrivate = false);

    ChatTestClient client;
    TestWorkspace *workspace = nullptr;
    TarnAPI *api = nullptr;
};

void TestChatCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    workspace = client.workspace.get();
    api = client.api.get();
}

void TestChatCalls::wireForm_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("query");
    QTest::addColumn<QJsonObject>("body");

    struct Row {
        const char *label;
        Call call;
        QString method;
        QString path;
        QString query;
        QJsonObject body;
    };
    const QString rooms = u"/api/rooms/"_s + oddRoomSent;
    const QString one = rooms + u"/messages/"_s + oddIdSent;
    const Row rows[] {
        { "oddRoom list", [](TarnAPI &a) { attempt(TarnChatCalls::rooms(a)); }, u"GET"_s, u"/api/rooms"_s, {}, {} },
        { "team", [](TarnAPI &a) { attempt(TarnChatCalls::team(a)); }, u"GET"_s, u"/api/team"_s, {}, {} },
        { "direct oddRoom", [](TarnAPI &a) { attempt(TarnChatCalls::createDirectRoom(a, u"u/2"_s)); }, u"POST"_s,
            u"/api/rooms"_s, {}, { { u"kind"_s, u"dm"_s }, { u"user_id"_s, u"u/2"_s } } },
        { "channel",
            [](TarnAPI &a) { attempt(TarnChatCalls::createChannel(a, u"ops & \"plans\""_s, true, { u"u1"_s })); },
            u"POST"_s, u"/api/rooms"_s, {},
            { { u"kind"_s, u"channel"_s }, { u"name"_s, u"ops & \"plans\""_s }, { u"private"_s, true },
                { u"members"_s, QJsonArray { u"u1"_s } } } },
        { "settings", [](TarnAPI &a) { attempt(TarnChatCalls::roomSettings(a, oddRoom)); }, u"GET"_s, rooms, {}, {} },
        { "save settings",
            [](TarnAPI &a) {
                attempt(TarnChatCalls::saveRoomSettings(
                    a, oddRoom, { .name = u"n"_s, .private_ = false, .archived = true, .members = {} }));
            },
            u"PATCH"_s, rooms, {},
            { { u"name"_s, u"n"_s }, { u"private"_s, false }, { u"archived"_s, true },
                { u"members"_s, QJsonArray() } } },
        { "newest page has no query", [](TarnAPI &a) { attempt(TarnChatCalls::messages(a, oddRoom)); }, u"GET"_s,
            rooms + u"/messages"_s, {}, {} },
        { "before 0 is still sent", [](TarnAPI &a) { attempt(TarnChatCalls::messages(a, oddRoom, 0)); }, u"GET"_s,
            rooms + u"/messages"_s, u"before=0"_s, {} },
        { "before a seq", [](TarnAPI &a) { attempt(TarnChatCalls::messages(a, oddRoom, 4711)); }, u"GET"_s,
            rooms + u"/messages"_s, u"before=4711"_s, {} },
        { "one message", [](TarnAPI &a) { attempt(TarnChatCalls::message(a, oddId, oddRoom)); }, u"GET"_s, one, {},
            {} },
        { "replies", [](TarnAPI &a) { attempt(TarnChatCalls::replies(a, oddId, oddRoom)); }, u"GET"_s,
            rooms + u"/messages"_s, u"parent="_s + oddIdSent, {} },
        { "send",
            [](TarnAPI &a) {
                attempt(TarnChatCalls::send(
                    a, u"hi"_s, oddRoom, u"n-1"_s, std::nullopt, { { u"f"_s, u"a.txt"_s, QByteArray("hi") } }));
            },
            u"POST"_s, rooms + u"/messages"_s, {},
            { { u"body"_s, u"hi"_s }, { u"nonce"_s, u"n-1"_s },
                { u"attachments"_s,
                    QJsonArray { QJsonObject { { u"name"_s, u"a.txt"_s }, { u"data"_s, u"aGk="_s } } } } } },
        { "reply in a thread", [](TarnAPI &a) { attempt(TarnChatCalls::send(a, u"yes"_s, oddRoom, u"n-2"_s, oddId)); },
            u"POST"_s, rooms + u"/messages"_s, {},
            { { u"body"_s, u"yes"_s }, { u"nonce"_s, u"n-2"_s }, { u"parent_id"_s, oddId } } },
        { "edit", [](TarnAPI &a) { attempt(TarnChatCalls::editMessage(a, oddId, oddRoom, u"new"_s, 3)); }, u"PATCH"_s,
            one, {}, { { u"body"_s, u"new"_s }, { u"version"_s, 3 } } },
        { "delete", [](TarnAPI &a) { attempt(TarnChatCalls::deleteMessage(a, oddId, oddRoom, 4)); }, u"DELETE"_s, one,
            {}, { { u"version"_s, 4 } } },
        { "add a reaction", [](TarnAPI &a) { attempt(TarnChatCalls::reactToMessage(a, oddId, oddRoom, u"👍"_s, true)); },
            u"POST"_s, one + u"/reactions"_s, {}, { { u"emoji"_s, u"👍"_s }, { u"active"_s, true } } },
        { "remove a reaction",
            [](TarnAPI &a) { attempt(TarnChatCalls::reactToMessage(a, oddId, oddRoom, u"👍"_s, false)); }, u"POST"_s,
            one + u"/reactions"_s, {}, { { u"emoji"_s, u"👍"_s }, { u"active"_s, false } } },
        { "save", [](TarnAPI &a) { attempt(TarnChatCalls::saveMessage(a, oddId, oddRoom, true)); }, u"POST"_s,
            one + u"/save"_s, {}, {} },
        { "unsave", [](TarnAPI &a) { attempt(TarnChatCalls::saveMessage(a, oddId, oddRoom, false)); }, u"DELETE"_s,
            one + u"/save"_s, {}, {} },
        { "read mark", [](TarnAPI &a) { attempt(TarnChatCalls::markRead(a, 12, oddRoom)); }, u"POST"_s,
            rooms + u"/read"_s, {}, { { u"seq"_s, 12 } } },
        { "search text is escaped",
            [](TarnAPI &a) { attempt(TarnChatCalls::searchMessages(a, u"a&b=c+d#e?f/g \"q\" 🙂"_s)); }, u"GET"_s,
            u"/api/rooms"_s, u"search=a%26b%3Dc%2Bd%23e%3Ff%2Fg%20%22q%22%20%F0%9F%99%82"_s, {} },
        { "file", [](TarnAPI &a) { attempt(TarnChatCalls::downloadMessageFile(a, oddId, oddRoom)); }, u"GET"_s,
            rooms + u"/files/"_s + oddIdSent, {}, {} },
        { "gif search", [](TarnAPI &a) { attempt(TarnChatCalls::gifs(a, u"cats & dogs"_s)); }, u"GET"_s, u"/api/gifs"_s,
            u"q=cats%20%26%20dogs"_s, {} },
        { "gif preview", [](TarnAPI &a) { attempt(TarnChatCalls::gifData(a, u"g?1"_s, true)); }, u"GET"_s,
            u"/api/gifs/g%3F1/preview"_s, {}, {} },
        { "gif file", [](TarnAPI &a) { attempt(TarnChatCalls::gifData(a, u"g?1"_s, false)); }, u"GET"_s,
            u"/api/gifs/g%3F1/file"_s, {}, {} },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.call << row.method << row.path << row.query << row.body;
}

void TestChatCalls::wireForm()
{
    QFETCH(Call, call);
    QFETCH(QString, method);
    QFETCH(QString, path);
    QFETCH(QString, query);
    QFETCH(QJsonObject, body);

    workspace->clearRequests();
    call(*api);
    const QJsonArray sent = workspace->requests();
    QCOMPARE(sent.size(), 1);
    const QJsonObject request = sent.first().toObject();
    QCOMPARE(request.value("method"_L1).toString(), method);
    QCOMPARE(request.value("path"_L1).toString(), path);
    QCOMPARE(request.value("query"_L1).toString(), query);
    const QByteArray sentBody = request.value("body"_L1).toString().toUtf8();
    QCOMPARE(sentBody.isEmpty() ? QJsonObject() : QJsonDocument::fromJson(sentBody).object(), body);
}

QString TestChatCalls::channel(const QString &name, bool isPrivate)
{
    return tarnWaitFor(TarnChatCalls::createChannel(*api, name, isPrivate, { tomas })).id;
}

void TestChatCalls::roundTrip_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("word");
    QTest::addRow("quotes") << u"say \"hello\" 'there'"_s << u"\"hello\""_s;
    QTest::addRow("url characters") << u"a&b=c+d#e?f/g"_s << u"a&b=c+d#e?f/g"_s;
    QTest::addRow("emoji") << u"launch 🚀 today"_s << u"🚀 today"_s;
    QTest::addRow("right to left") << u"שלום עולם"_s << u"עולם"_s;
    QTest::addRow("search syntax") << u"NEAR(x y) OR col:* -z"_s << u"OR col:*"_s;
    QTest::addRow("10,000 characters") << (u"long "_s + QString(9995, u'x')) << u"long"_s;
}

void TestChatCalls::roundTrip()
{
    QFETCH(QString, text);
    QFETCH(QString, word);
    const QString room = channel(text.left(80));
    QCOMPARE(tarnWaitFor(TarnChatCalls::roomSettings(*api, room)).name, text.left(80).trimmed());

    const TarnMessage sent = tarnWaitFor(TarnChatCalls::send(*api, text, room, QUuid::createUuid().toString()));
    QCOMPARE(sent.body, text);
    const TarnMessagePage page = tarnWaitFor(TarnChatCalls::messages(*api, room));
    QCOMPARE(page.messages.size(), 1);
    QCOMPARE(page.messages.first().body, text);

    const QList<TarnMessageSearchHit> hits = tarnWaitFor(TarnChatCalls::searchMessages(*api, word));
    QVERIFY(
        std::any_of(hits.begin(), hits.end(), [&sent](const TarnMessageSearchHit &hit) { return hit.id == sent.id; }));
}

void TestChatCalls::pagingBackReachesTheFirstMessage()
{
    const QList<TarnRoom> rooms = tarnWaitFor(TarnChatCalls::rooms(*api));
    const auto general
        = std::find_if(rooms.begin(), rooms.end(), [](const TarnRoom &r) { return r.name == "general"_L1; });
    QVERIFY(general != rooms.end());

    TarnMessagePage page = tarnWaitFor(TarnChatCalls::messages(*api, general->id));
    QVERIFY(page.has_more);
    QList<qint64> seqs;
    for (;;) {
        QList<qint64> older;
        for (const TarnMessage &m : page.messages)
            older.append(m.seq);
        QVERIFY(std::is_sorted(older.begin(), older.end()));
        seqs = older + seqs;
        if (!page.has_more)
            break;
        page = tarnWaitFor(TarnChatCalls::messages(*api, general->id, page.messages.first().seq));
    }
    QVERIFY(std::adjacent_find(seqs.begin(), seqs.end(), std::greater_equal<>()) == seqs.end());
    QCOMPARE(seqs.first(), 1);
    QVERIFY(seqs.size() > 150);

    // Zero is a sequence number like any other: nothing comes before it.
    const TarnMessagePage none = tarnWaitFor(TarnChatCalls::messages(*api, general->id, 0));
    QVERIFY(none.messages.isEmpty());
    QVERIFY(!none.has_more);
}

void TestChatCalls::resentNonceStoresOneMessage()
{
    const QString room = channel(u"retries"_s);
    const QString nonce = u"nonce-cut-1"_s;
    // Every answer is cut, the network layer's own resend's too: the send
    // fails although the message was stored, and a later retry is a new call.
    workspace->setFault(QJsonObject { { u"method"_s, u"POST"_s }, { u"path"_s, u"/api/rooms/%1/messages"_s.arg(room) },
        { u"cut"_s, true }, { u"times"_s, 0 } });
    QVERIFY(!failureOf(TarnChatCalls::send(*api, u"once"_s, room, nonce)).isEmpty());
    workspace->clearFaults();
    const TarnMessage retried = tarnWaitFor(TarnChatCalls::send(*api, u"once"_s, room, nonce));
    const TarnMessagePage page = tarnWaitFor(TarnChatCalls::messages(*api, room));
    QCOMPARE(page.messages.size(), 1);
    QCOMPARE(page.messages.first().id, retried.id);

    // Another nonce is another message.
    tarnWaitFor(TarnChatCalls::send(*api, u"once"_s, room, u"nonce-cut-2"_s));
    QCOMPARE(tarnWaitFor(TarnChatCalls::messages(*api, room)).messages.size(), 2);
}

void TestChatCalls::staleVersionsAreRefused()
{
    const QString room = channel(u"edits"_s);
    const TarnMessage sent = tarnWaitFor(TarnChatCalls::send(*api, u"draft"_s, room, u"nonce-edit"_s));
    const qint64 first = sent.version.value_or(-1);
    const TarnMessage edited = tarnWaitFor(TarnChatCalls::editMessage(*api, sent.id, room, u"final"_s, first));
    QCOMPARE(edited.body, u"final"_s);
    QVERIFY(edited.version > first);

    QVERIFY(failureOf(TarnChatCalls::editMessage(*api, sent.id, room, u"lost"_s, first)).contains(u"changed"_s));
    QVERIFY(failureOf(TarnChatCalls::deleteMessage(*api, sent.id, room, first)).contains(u"changed"_s));
    QCOMPARE(tarnWaitFor(TarnChatCalls::message(*api, sent.id, room)).body, u"final"_s);

    const TarnMessage deleted = tarnWaitFor(TarnChatCalls::deleteMessage(*api, sent.id, room, *edited.version));
    QVERIFY(deleted.deleted_at.has_value());
    QVERIFY(tarnWaitFor(TarnChatCalls::searchMessages(*api, u"final"_s)).isEmpty());
}

void TestChatCalls::reactionsAndSaves()
{
    const QString room = channel(u"reactions"_s);
    const TarnMessage sent = tarnWaitFor(TarnChatCalls::send(*api, u"ship it"_s, room, u"nonce-react"_s));
    const QString thumbs = u"👍"_s;

    TarnMessage m = tarnWaitFor(TarnChatCalls::reactToMessage(*api, sent.id, room, thumbs, true));
    QCOMPARE(m.reactions.value_or(QList<TarnReaction>()), QList<TarnReaction>({ { thumbs, 1, true } }));
    m = tarnWaitFor(TarnChatCalls::reactToMessage(*api, sent.id, room, thumbs, false));
    QVERIFY(m.reactions.value_or(QList<TarnReaction>()).isEmpty());

    QCOMPARE(tarnWaitFor(TarnChatCalls::saveMessage(*api, sent.id, room, true)).saved, true);
    QCOMPARE(tarnWaitFor(TarnChatCalls::message(*api, sent.id, room)).saved, true);
    QCOMPARE(tarnWaitFor(TarnChatCalls::saveMessage(*api, sent.id, room, false)).saved, false);
}

void TestChatCalls::threadsAndReadMarks()
{
    const QString room = channel(u"threads"_s);
    const TarnMessage parent = tarnWaitFor(TarnChatCalls::send(*api, u"question?"_s, room, u"nonce-q"_s));
    tarnWaitFor(TarnChatCalls::send(*api, u"answer"_s, room, u"nonce-a"_s, parent.id));
    const TarnMessagePage thread = tarnWaitFor(TarnChatCalls::replies(*api, parent.id, room));
    QCOMPARE(thread.messages.size(), 1);
    QCOMPARE(thread.messages.first().parent_id, parent.id);
    const TarnMessagePage timeline = tarnWaitFor(TarnChatCalls::messages(*api, room));
    QCOMPARE(timeline.messages.size(), 1);
    QCOMPARE(timeline.messages.first().reply_count, 1);

    // Another person's message is unread until the read mark passes it.
    const TestWorkspace::Answer posted = workspace->send("POST", u"api/test/rooms/%1/messages"_s.arg(room), QString(),
        QJsonObject { { u"user_id"_s, tomas }, { u"body"_s, u"from Tomas"_s } });
    QCOMPARE(posted.status, 200);
    const auto unread = [this, &room] {
        const QList<TarnRoom> rooms = tarnWaitFor(TarnChatCalls::rooms(*api));
        const auto it = std::find_if(rooms.begin(), rooms.end(), [&room](const TarnRoom &r) { return r.id == room; });
        return it == rooms.end() ? -1 : it->unread;
    };
    QCOMPARE(unread(), 1);
    tarnWaitFor(TarnChatCalls::markRead(*api, tarnWaitFor(TarnChatCalls::messages(*api, room)).last_seq, room));
    QCOMPARE(unread(), 0);
}

void TestChatCalls::roomsAreUniqueAndPrivate()
{
    const QString direct = tarnWaitFor(TarnChatCalls::createDirectRoom(*api, tomas)).id;
    QCOMPARE(tarnWaitFor(TarnChatCalls::createDirectRoom(*api, tomas)).id, direct);

    const QString secret = channel(u"secret"_s, true);
    const QString ada = workspace->signIn(u"ada@halvard.example"_s);
    const QByteArray seen = workspace->send("GET", u"api/rooms"_s, ada, QJsonObject()).body;
    QVERIFY(!seen.isEmpty());
    QVERIFY(!seen.contains(secret.toUtf8()));
    QVERIFY(!seen.contains(direct.toUtf8()));
    QCOMPARE(workspace->send("GET", u"api/rooms/%1/messages"_s.arg(secret), ada, QJsonObject()).status, 404);
}

void TestChatCalls::filesUpToTheLimit()
{
    const QString room = channel(u"files"_s);
    QByteArray largest(TarnChatCalls::maxFileBytes, 'a');
    largest[12345] = 'z';
    const ChatDraftFile fits { u"1"_s, u"a&b #1.bin"_s, largest };
    const TarnMessage sent = tarnWaitFor(TarnChatCalls::send(*api, QString(), room, u"nonce-file"_s, {}, { fits }));
    QCOMPARE(sent.attachments.size(), 1);
    QCOMPARE(sent.attachments.first().name, fits.name);
    QCOMPARE(sent.attachments.first().size, TarnChatCalls::maxFileBytes);
    QCOMPARE(tarnWaitFor(TarnChatCalls::downloadMessageFile(*api, sent.attachments.first().id, room)), largest);

    const ChatDraftFile over { u"2"_s, u"over.bin"_s, largest + 'x' };
    QVERIFY(failureOf(TarnChatCalls::send(*api, QString(), room, u"nonce-over"_s, {}, { over })).contains(over.name));
    QCOMPARE(tarnWaitFor(TarnChatCalls::gifs(*api, u"cats"_s)).configured, false);
}

QTEST_GUILESS_MAIN(TestChatCalls)
#include "tst_chatcalls.moc"
