#include "TarnWaitFor.h"
#include "auth/NativeSessionStore.h"
#include "chat/TarnChatCalls.h"
#include "service/TarnAPI.h"
#include "support/TestWorkspace.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

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
const QString room = u"r&=+#?/ é"_s;
const QString roomSent = u"r%26%3D%2B%23%3F%2F%20%C3%A9"_s;
const QString id = u"m:1/2"_s;
const QString idSent = u"m:1%2F2"_s;

} // namespace

// Each chat call as the workspace receives it: method, escaped path and
// query, and body.
class TestChatCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void wireForm_data();
    void wireForm();

private:
    std::unique_ptr<TestWorkspace> workspace;
    NativeSessionStore store { u"co.halvard.pilo-tarn.session.test"_s };
    QTemporaryDir settingsFolder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<TarnAPI> api;
};

void TestChatCalls::initTestCase()
{
    workspace = std::make_unique<TestWorkspace>();
    QVERIFY2(workspace->isRunning(), qPrintable(workspace->error()));
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), &error);
    QVERIFY2(config, qPrintable(error));
    settings = std::make_unique<QSettings>(settingsFolder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    const QString token = workspace->signIn(u"maren@halvard.example"_s);
    QVERIFY(!token.isEmpty());
    tarnWaitFor(store.save(token));
    api = std::make_unique<TarnAPI>(*config, store, settings.get());
    tarnWaitFor(api->refreshSession());
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
    const QString rooms = u"/api/rooms/"_s + roomSent;
    const QString one = rooms + u"/messages/"_s + idSent;
    const Row rows[] {
        { "room list", [](TarnAPI &a) { attempt(TarnChatCalls::rooms(a)); }, u"GET"_s, u"/api/rooms"_s, {}, {} },
        { "team", [](TarnAPI &a) { attempt(TarnChatCalls::team(a)); }, u"GET"_s, u"/api/team"_s, {}, {} },
        { "direct room", [](TarnAPI &a) { attempt(TarnChatCalls::createDirectRoom(a, u"u/2"_s)); }, u"POST"_s,
            u"/api/rooms"_s, {}, { { u"kind"_s, u"dm"_s }, { u"user_id"_s, u"u/2"_s } } },
        { "channel",
            [](TarnAPI &a) { attempt(TarnChatCalls::createChannel(a, u"ops & \"plans\""_s, true, { u"u1"_s })); },
            u"POST"_s, u"/api/rooms"_s, {},
            { { u"kind"_s, u"channel"_s }, { u"name"_s, u"ops & \"plans\""_s }, { u"private"_s, true },
                { u"members"_s, QJsonArray { u"u1"_s } } } },
        { "settings", [](TarnAPI &a) { attempt(TarnChatCalls::roomSettings(a, room)); }, u"GET"_s, rooms, {}, {} },
        { "save settings",
            [](TarnAPI &a) {
                attempt(TarnChatCalls::saveRoomSettings(
                    a, room, { .name = u"n"_s, .private_ = false, .archived = true, .members = {} }));
            },
            u"PATCH"_s, rooms, {},
            { { u"name"_s, u"n"_s }, { u"private"_s, false }, { u"archived"_s, true },
                { u"members"_s, QJsonArray() } } },
        { "newest page has no query", [](TarnAPI &a) { attempt(TarnChatCalls::messages(a, room)); }, u"GET"_s,
            rooms + u"/messages"_s, {}, {} },
        { "before 0 is still sent", [](TarnAPI &a) { attempt(TarnChatCalls::messages(a, room, 0)); }, u"GET"_s,
            rooms + u"/messages"_s, u"before=0"_s, {} },
        { "before a seq", [](TarnAPI &a) { attempt(TarnChatCalls::messages(a, room, 4711)); }, u"GET"_s,
            rooms + u"/messages"_s, u"before=4711"_s, {} },
        { "one message", [](TarnAPI &a) { attempt(TarnChatCalls::message(a, id, room)); }, u"GET"_s, one, {}, {} },
        { "replies", [](TarnAPI &a) { attempt(TarnChatCalls::replies(a, id, room)); }, u"GET"_s,
            rooms + u"/messages"_s, u"parent="_s + idSent, {} },
        { "send",
            [](TarnAPI &a) {
                attempt(TarnChatCalls::send(a, u"hi"_s, room, u"n-1"_s, std::nullopt,
                    { { u"f"_s, u"a.txt"_s, QByteArray("hi") } }));
            },
            u"POST"_s, rooms + u"/messages"_s, {},
            { { u"body"_s, u"hi"_s }, { u"nonce"_s, u"n-1"_s },
                { u"attachments"_s, QJsonArray { QJsonObject { { u"name"_s, u"a.txt"_s }, { u"data"_s, u"aGk="_s } } } } } },
        { "reply in a thread", [](TarnAPI &a) { attempt(TarnChatCalls::send(a, u"yes"_s, room, u"n-2"_s, id)); },
            u"POST"_s, rooms + u"/messages"_s, {},
            { { u"body"_s, u"yes"_s }, { u"nonce"_s, u"n-2"_s }, { u"parent_id"_s, id } } },
        { "edit", [](TarnAPI &a) { attempt(TarnChatCalls::editMessage(a, id, room, u"new"_s, 3)); }, u"PATCH"_s,
            one, {}, { { u"body"_s, u"new"_s }, { u"version"_s, 3 } } },
        { "delete", [](TarnAPI &a) { attempt(TarnChatCalls::deleteMessage(a, id, room, 4)); }, u"DELETE"_s, one,
            {}, { { u"version"_s, 4 } } },
        { "add a reaction", [](TarnAPI &a) { attempt(TarnChatCalls::reactToMessage(a, id, room, u"👍"_s, true)); },
            u"POST"_s, one + u"/reactions"_s, {}, { { u"emoji"_s, u"👍"_s }, { u"active"_s, true } } },
        { "remove a reaction",
            [](TarnAPI &a) { attempt(TarnChatCalls::reactToMessage(a, id, room, u"👍"_s, false)); }, u"POST"_s,
            one + u"/reactions"_s, {}, { { u"emoji"_s, u"👍"_s }, { u"active"_s, false } } },
        { "save", [](TarnAPI &a) { attempt(TarnChatCalls::saveMessage(a, id, room, true)); }, u"POST"_s,
            one + u"/save"_s, {}, {} },
        { "unsave", [](TarnAPI &a) { attempt(TarnChatCalls::saveMessage(a, id, room, false)); }, u"DELETE"_s,
            one + u"/save"_s, {}, {} },
        { "read mark", [](TarnAPI &a) { attempt(TarnChatCalls::markRead(a, 12, room)); }, u"POST"_s,
            rooms + u"/read"_s, {}, { { u"seq"_s, 12 } } },
        { "search text is escaped",
            [](TarnAPI &a) { attempt(TarnChatCalls::searchMessages(a, u"a&b=c+d#e?f/g \"q\" 🙂"_s)); }, u"GET"_s,
            u"/api/rooms"_s, u"search=a%26b%3Dc%2Bd%23e%3Ff%2Fg%20%22q%22%20%F0%9F%99%82"_s, {} },
        { "file", [](TarnAPI &a) { attempt(TarnChatCalls::downloadMessageFile(a, id, room)); }, u"GET"_s,
            rooms + u"/files/"_s + idSent, {}, {} },
        { "gif search", [](TarnAPI &a) { attempt(TarnChatCalls::gifs(a, u"cats & dogs"_s)); }, u"GET"_s,
            u"/api/gifs"_s, u"q=cats%20%26%20dogs"_s, {} },
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

QTEST_GUILESS_MAIN(TestChatCalls)
#include "tst_chatcalls.moc"
