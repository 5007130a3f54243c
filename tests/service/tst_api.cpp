#include "TarnWaitFor.h"
#include "auth/NativeSessionStore.h"
#include "chat/TarnChatCalls.h"
#include "service/TarnAPI.h"
#include "shell/TarnSettingsCalls.h"
#include "support/TestWorkspace.h"

#include <QJsonArray>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Kind = TarnAPIError::Kind;

// What a call ended in: the error's kind and text, or nothing on success.
struct Outcome {
    std::optional<Kind> kind;
    QString text;
};

template <typename T> Outcome outcomeOf(QCoro::Task<T> task)
{
    try {
        tarnWaitFor(std::move(task));
        return {};
    } catch (const TarnAPIError &error) {
        return { error.kind(), error.text() };
    }
}

QJsonObject fault(const QByteArray &method, const QString &path, int status, const QString &contentType,
    const QString &body, const QString &location = {})
{
    QJsonObject f { { u"method"_s, QString::fromLatin1(method) }, { u"path"_s, path }, { u"status"_s, status },
        { u"content_type"_s, contentType }, { u"body"_s, body }, { u"times"_s, 1 } };
    if (!location.isEmpty())
        f.insert(u"location"_s, location);
    return f;
}

// An answer whose "error" is part of its data.
struct ErrorAsData {
    static constexpr bool errorFieldIsData = true;
    QString error;
    static ErrorAsData fromJSON(const TarnJSONObject &json) { return { json.string("error"_L1) }; }
};

template <typename T> QCoro::Task<T> getSession(TarnAPI &api)
{
    return api.request<T>(TarnPath(u"/api/session"_s));
}

} // namespace

// The service client against a real local workspace over HTTPS, with the
// token in a real (private) keyring. Faults make chosen calls misbehave.
class TestAPI : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void nothingSentWithoutToken();
    void headersAndCSRF();
    void failures_data();
    void failures();
    void foreignPathsNeverSent_data();
    void foreignPathsNeverSent();
    void untrustedCertificateIsTransportError();
    void silenceTimesOut();
    void downloads_data();
    void downloads();
    void refreshWritesTextSize();
    void logoutAlwaysForgets();
    void resentChangeIsCarriedOutOnce();

private:
    [[nodiscard]] bool tokenStored() { return tarnWaitFor(store.token()).has_value(); }

    std::unique_ptr<TestWorkspace> workspace;
    std::optional<Config> config;
    NativeSessionStore store { u"co.halvard.pilo-tarn.session.test"_s };
    QTemporaryDir settingsFolder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<TarnAPI> api;
    QString token;
};

void TestAPI::initTestCase()
{
    workspace = std::make_unique<TestWorkspace>();
    QVERIFY2(workspace->isRunning(), qPrintable(workspace->error()));
    QString error;
    config = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), &error);
    QVERIFY2(config, qPrintable(error));
    settings = std::make_unique<QSettings>(settingsFolder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
}

void TestAPI::init()
{
    workspace->clearFaults();
    token = workspace->signIn(u"maren@halvard.example"_s);
    QVERIFY(!token.isEmpty());
    tarnWaitFor(store.save(token));
    api = std::make_unique<TarnAPI>(*config, store, settings.get());
    workspace->clearRequests();
}

void TestAPI::nothingSentWithoutToken()
{
    tarnWaitFor(store.clear());
    QCOMPARE(outcomeOf(getSession<TarnSession>(*api)).kind, Kind::signedOut);
    QCOMPARE(workspace->requests().size(), 0);
}

void TestAPI::headersAndCSRF()
{
    // A change before the session is loaded has no CSRF token: refused here.
    const QString teal = u"teal"_s;
    QCOMPARE(outcomeOf(TarnSettingsCalls::setAccent(*api, teal)).kind, Kind::signedOut);
    QCOMPARE(workspace->requests().size(), 0);
    QVERIFY(tokenStored()); // refusing locally is not a sign-out

    // A read goes out without one, then the loaded session supplies it.
    const TarnSession session = tarnWaitFor(api->refreshSession());
    QCOMPARE(session.name, u"Maren Holt"_s);
    QVERIFY(api->signedIn());
    QCOMPARE(outcomeOf(TarnSettingsCalls::setAccent(*api, teal)).kind, std::nullopt);

    const QJsonArray sent = workspace->requests();
    QCOMPARE(sent.size(), 2);
    const QJsonObject get = sent.at(0).toObject();
    QCOMPARE(get.value("cookie"_L1).toBool(), true);
    QCOMPARE(get.value("accept"_L1).toString(), u"application/json"_s);
    QVERIFY(get.value("csrf"_L1).isNull());
    QVERIFY(get.value("content_type"_L1).isNull());
    const QJsonObject patch = sent.at(1).toObject();
    QCOMPARE(patch.value("csrf"_L1).toString(), session.csrf);
    QCOMPARE(patch.value("content_type"_L1).toString(), u"application/json"_s);
    QCOMPARE(patch.value("body"_L1).toString(), uR"({"accent":"teal"})"_s);
}

void TestAPI::failures_data()
{
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<bool>("errorFieldIsData");
    QTest::addColumn<std::optional<Kind>>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("signsOut");

    const QByteArray get = "GET";
    const QString path = u"/api/session"_s;
    const QString json = u"application/json"_s;
    const QString session = uR"({"id":"p","name":"N","email":"e","csrf":"c","apps":["Home"]})"_s;
    const std::optional<Kind> ok;

    QTest::addRow("401") << fault(get, path, 401, json, uR"({"error":"Sign in to continue."})"_s) << false
                         << std::optional(Kind::signedOut) << u"Sign in to Pilo Tarn again."_s << true;
    QTest::addRow("html page") << fault(get, path, 200, u"text/html"_s, u"<html></html>"_s) << false
                               << std::optional(Kind::signedOut) << QString() << true;
    QTest::addRow("html with charset") << fault(get, path, 200, u"text/html; charset=utf-8"_s, session) << false
                                       << std::optional(Kind::signedOut) << QString() << true;
    QTest::addRow("redirect to the sign-in page") << fault(get, path, 302, u"text/plain"_s, QString(), u"/login"_s)
                                                  << false << std::optional(Kind::signedOut) << QString() << true;
    QTest::addRow("redirect to another host")
        << fault(get, path, 302, u"text/plain"_s, u"moved"_s, u"https://elsewhere.invalid/api/session"_s) << false
        << std::optional(Kind::server) << u"Pilo Tarn returned HTTP 302."_s << false;
    QTest::addRow("redirect to plain http on our host")
        << fault(get, path, 301, json, uR"({"error":"Use https."})"_s, u"http://127.0.0.1/api/session"_s) << false
        << std::optional(Kind::server) << u"Use https."_s << false;
    QTest::addRow("500 empty") << fault(get, path, 500, u"text/plain"_s, QString()) << false
                               << std::optional(Kind::server) << u"Pilo Tarn returned HTTP 500."_s << false;
    QTest::addRow("500 not json") << fault(get, path, 500, u"text/plain"_s, u"oops"_s) << false
                                  << std::optional(Kind::server) << u"Pilo Tarn returned HTTP 500."_s << false;
    QTest::addRow("503 with message") << fault(get, path, 503, json, uR"({"error":"Down for upkeep."})"_s) << false
                                      << std::optional(Kind::server) << u"Down for upkeep."_s << false;
    QTest::addRow("400 empty message") << fault(get, path, 400, json, uR"({"error":""})"_s) << false
                                       << std::optional(Kind::server) << QString() << false;
    QTest::addRow("404 error not a string")
        << fault(get, path, 404, json, uR"({"error":7})"_s) << false << std::optional(Kind::server)
        << u"Pilo Tarn returned HTTP 404."_s << false;
    QTest::addRow("200 carrying error") << fault(get, path, 200, json, uR"({"error":"Room is archived."})"_s) << false
                                        << std::optional(Kind::server) << u"Room is archived."_s << false;
    QTest::addRow("200 with empty error")
        << fault(get, path, 200, json, uR"({"error":"","id":"p","name":"N","email":"e","csrf":"c","apps":[]})"_s)
        << false << ok << QString() << false;
    QTest::addRow("200 error is data") << fault(get, path, 200, json, uR"({"error":"x"})"_s) << true << ok << QString()
                                       << false;
    QTest::addRow("200 not json") << fault(get, path, 200, json, u"{\"id\":"_s) << false
                                  << std::optional(Kind::invalidResponse)
                                  << u"Pilo Tarn returned an unreadable response. Try again."_s << false;
    QTest::addRow("200 wrong type") << fault(
        get, path, 200, json, uR"({"id":"p","name":"N","email":"e","csrf":"c","apps":"Home"})"_s)
                                    << false << std::optional(Kind::invalidResponse) << QString() << false;
    QTest::addRow("200 missing key") << fault(get, path, 200, json, uR"({"id":"p","name":"N","email":"e","apps":[]})"_s)
                                     << false << std::optional(Kind::invalidResponse) << QString() << false;

    // Large answers are read away from the window's thread; their failures
    // must still come back as the same errors.
    const QString padding(TarnAPI::largeAnswerBytes, u'x');
    QTest::addRow("large answer") << fault(
        get, path, 200, json, uR"({"pad":"%1","id":"p","name":"N","email":"e","csrf":"c","apps":[]})"_s.arg(padding))
                                  << false << ok << QString() << false;
    QTest::addRow("large answer carrying error")
        << fault(get, path, 200, json, uR"({"pad":"%1","error":"Room is archived."})"_s.arg(padding)) << false
        << std::optional(Kind::server) << u"Room is archived."_s << false;
    QTest::addRow("large answer missing key") << fault(get, path, 200, json, uR"({"pad":"%1","id":"p"})"_s.arg(padding))
                                              << false << std::optional(Kind::invalidResponse) << QString() << false;
}

void TestAPI::failures()
{
    QFETCH(QJsonObject, fault);
    QFETCH(bool, errorFieldIsData);
    QFETCH(std::optional<Kind>, kind);
    QFETCH(QString, text);
    QFETCH(bool, signsOut);

    tarnWaitFor(api->refreshSession());
    QSignalSpy signedOut(api.get(), &TarnAPI::signedOut);
    workspace->setFault(fault);
    workspace->clearRequests();

    const Outcome outcome
        = errorFieldIsData ? outcomeOf(getSession<ErrorAsData>(*api)) : outcomeOf(getSession<TarnSession>(*api));
    QVERIFY2(outcome.kind == kind, qPrintable(outcome.text));
    if (!text.isNull())
        QCOMPARE(outcome.text, text);
    QCOMPARE(!tokenStored(), signsOut);
    QCOMPARE(!api->signedIn(), signsOut);
    QCOMPARE(signedOut.size(), signsOut ? 1 : 0);
    // Nothing ever reached another host, and only an allowed redirect was followed.
    for (const QJsonValue &request : workspace->requests()) {
        const QString path = request.toObject().value("path"_L1).toString();
        QVERIFY2(path == "/api/session"_L1 || path == "/login"_L1, qPrintable(path));
    }
}

void TestAPI::foreignPathsNeverSent_data()
{
    QTest::addColumn<QString>("path");
    QTest::addRow("other host") << u"https://elsewhere.invalid/api/session"_s;
    QTest::addRow("network path") << u"//elsewhere.invalid/api/session"_s;
    QTest::addRow("plain http") << u"http://127.0.0.1/api/session"_s;
    QTest::addRow("other scheme") << u"file:///etc/passwd"_s;
}

void TestAPI::foreignPathsNeverSent()
{
    QFETCH(QString, path);
    QCOMPARE(outcomeOf(api->request<QJsonValue>(TarnPath(path))).kind, Kind::invalidResponse);
    QCOMPARE(workspace->requests().size(), 0);
    QVERIFY(tokenStored());
}

void TestAPI::untrustedCertificateIsTransportError()
{
    QString error;
    const std::optional<Config> untrusted = Config::fromOptions(workspace->url().toString(), {}, &error);
    QVERIFY(untrusted);
    TarnAPI stranger(*untrusted, store, nullptr);
    const Outcome outcome = outcomeOf(getSession<TarnSession>(stranger));
    QCOMPARE(outcome.kind, Kind::transport);
    QVERIFY(!outcome.text.isEmpty());
    QVERIFY(tokenStored());
}

void TestAPI::silenceTimesOut()
{
    // The platform says only "Operation canceled" when a transfer times out.
    Config impatient = *config;
    impatient.setAnswerTimeout(std::chrono::seconds(1));
    TarnAPI quick(impatient, store, settings.get());
    QJsonObject silence = fault("GET", u"/api/session"_s, 0, QString(), QString());
    silence.insert(u"delay_ms"_s, 3000);
    workspace->setFault(silence);
    const Outcome outcome = outcomeOf(quick.refreshSession());
    QCOMPARE(outcome.kind, std::optional(Kind::transport));
    QCOMPARE(outcome.text, u"The workspace did not answer within 1 s."_s);
    QVERIFY(tokenStored());
}

void TestAPI::downloads_data()
{
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<qint64>("maxBytes");
    QTest::addColumn<std::optional<Kind>>("kind");
    QTest::addColumn<QString>("text");

    const QString path = u"/api/files/f-1"_s;
    QTest::addRow("bytes") << fault("GET", path, 200, u"application/octet-stream"_s, u"%PDF-1.7"_s) << qint64(8)
                           << std::optional<Kind>() << QString();
    QTest::addRow("too large") << fault("GET", path, 200, u"application/octet-stream"_s, u"%PDF-1.7"_s) << qint64(7)
                               << std::optional(Kind::server) << u"This file is too large to open here."_s;
    QTest::addRow("missing") << fault("GET", path, 404, u"text/plain"_s, QString()) << qint64(100)
                             << std::optional(Kind::server) << u"Could not download this file."_s;
    QTest::addRow("refused with message")
        << fault("GET", path, 403, u"application/json"_s, uR"({"error":"Not yours."})"_s) << qint64(100)
        << std::optional(Kind::server) << u"Not yours."_s;
    QTest::addRow("html means signed out") << fault("GET", path, 200, u"text/html"_s, u"<p>"_s) << qint64(100)
                                           << std::optional(Kind::signedOut) << QString();
}

void TestAPI::downloads()
{
    QFETCH(QJsonObject, fault);
    QFETCH(qint64, maxBytes);
    QFETCH(std::optional<Kind>, kind);
    QFETCH(QString, text);

    workspace->setFault(fault);
    try {
        const QByteArray bytes = tarnWaitFor(api->downloadFile(TarnPath(u"/api/files/f-1"_s), maxBytes));
        QVERIFY(!kind);
        QCOMPARE(bytes, QByteArray("%PDF-1.7"));
    } catch (const TarnAPIError &error) {
        QCOMPARE(std::optional(error.kind()), kind);
        if (!text.isNull())
            QCOMPARE(error.text(), text);
    }
}

void TestAPI::refreshWritesTextSize()
{
    settings->remove(u"tarn.textSize"_s);
    tarnWaitFor(api->refreshSession());
    QVERIFY(!settings->contains(u"tarn.textSize"_s)); // no saved size: the preference is left alone
    const QString large = u"large"_s;
    tarnWaitFor(TarnSettingsCalls::setTextSize(*api, large));
    QCOMPARE(tarnWaitFor(api->refreshSession()).text_size, std::optional<QString>(u"large"_s));
    QCOMPARE(settings->value(u"tarn.textSize"_s).toString(), u"large"_s);
}

void TestAPI::logoutAlwaysForgets()
{
    // The service is told, and the session ends there too.
    tarnWaitFor(api->refreshSession());
    tarnWaitFor(api->logout());
    QVERIFY(!tokenStored());
    QVERIFY(!api->signedIn());
    QVERIFY(workspace->session(token).isEmpty());

    // When the service cannot be told, the token is still forgotten here.
    init();
    tarnWaitFor(api->refreshSession());
    workspace->setFault(fault("POST", u"/api/logout"_s, 500, u"text/plain"_s, QString()));
    QCOMPARE(outcomeOf(api->logout()).text, u"Pilo Tarn returned HTTP 500."_s);
    QVERIFY(!tokenStored());
    QVERIFY(!api->signedIn());
}

void TestAPI::resentChangeIsCarriedOutOnce()
{
    tarnWaitFor(api->refreshSession());
    const QString name = u"resent-%1"_s.arg(QDateTime::currentMSecsSinceEpoch());
    // The room is made, then the answer is lost with the connection: the
    // network layer sends the same request again by itself.
    QJsonObject cut { { u"method"_s, u"POST"_s }, { u"path"_s, u"/api/rooms"_s }, { u"cut"_s, true },
        { u"times"_s, 1 } };
    workspace->setFault(cut);
    const TarnCreatedID created = tarnWaitFor(TarnChatCalls::createChannel(*api, name, false, {}));

    const QList<TarnRoom> rooms = tarnWaitFor(TarnChatCalls::rooms(*api));
    QCOMPARE(std::count_if(rooms.begin(), rooms.end(), [&](const TarnRoom &room) { return room.name == name; }), 1);
    QVERIFY(std::any_of(rooms.begin(), rooms.end(), [&](const TarnRoom &room) { return room.id == created.id; }));

    QJsonArray posts;
    for (const QJsonValue &sent : workspace->requests())
        if (sent.toObject().value("method"_L1) == "POST"_L1)
            posts.append(sent);
    QCOMPARE(posts.size(), 2);
    const QString key = posts.at(0).toObject().value("idempotency_key"_L1).toString();
    QVERIFY(!key.isEmpty());
    QCOMPARE(posts.at(1).toObject().value("idempotency_key"_L1).toString(), key);

    // Another call is another change, under a key of its own.
    tarnWaitFor(TarnChatCalls::createChannel(*api, name + u"-2"_s, false, {}));
    QVERIFY(workspace->requests().last().toObject().value("idempotency_key"_L1).toString() != key);
}

QTEST_GUILESS_MAIN(TestAPI)
#include "tst_api.moc"
