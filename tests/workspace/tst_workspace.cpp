#include "support/TestWorkspace.h"

#include <QDirIterator>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString expired = u"Sign-in expired. Start again."_s;
const QString unverified = u"Sign-in could not be verified. Start again."_s;

struct Endpoint {
    QByteArray method;
    QString path;
    QByteArray body;
};

// Every endpoint that needs a session, with a body it would accept.
const Endpoint authenticated[] = {
    { "GET", u"api/session"_s, "" },
    { "POST", u"api/logout"_s, "" },
    { "DELETE", u"api/team/me/sessions"_s, "" },
    { "PATCH", u"api/team/me/accent"_s, R"({"accent":"teal"})" },
    { "PATCH", u"api/team/me/text-size"_s, R"({"text_size":"large"})" },
    { "PATCH", u"api/team/me/appearance"_s, R"({"background":"paper"})" },
    { "POST", u"api/native/google/start"_s, R"({"service":"gmail"})" },
};

// What a refused request lacks: a live session (the first four), or the
// session's own CSRF token.
enum class Lack { cookie, knownToken, liveToken, cookieName, csrf, rightCSRF, ownCSRF };

struct RefusalRow {
    Endpoint endpoint;
    Lack lack;
};

struct ExchangeRow {
    const char *name;
    QByteArray body; // $CODE, $VERIFIER, $OTHER and $CHALLENGE are filled in
    QString message;
    bool codeSpent;
};

struct Signed {
    QString token;
    QString csrf;
};

Signed signIn(TestWorkspace &ws, const QString &email)
{
    const QString token = ws.signIn(email);
    return { token, ws.session(token).value("csrf"_L1).toString() };
}

TestWorkspace::Answer call(TestWorkspace &ws, const Signed &who, const QByteArray &method, const QString &path)
{
    return ws.send(method, path, who.token, {}, { { "X-CSRF-Token", who.csrf.toUtf8() } });
}

TestWorkspace::Answer exchange(TestWorkspace &ws, const QString &code, const QString &verifier)
{
    return ws.send(
        "POST", u"api/mobile/exchange"_s, {}, QJsonObject { { u"code"_s, code }, { u"verifier"_s, verifier } });
}

struct CannedRow {
    const char *name;
    int status;
    QByteArray contentType;
    QByteArray body;
    QByteArray location;
};

QJsonObject fault(const char *path, int status, int delayMs, const CannedRow &canned = {})
{
    return { { u"method"_s, u"GET"_s }, { u"path"_s, QLatin1StringView(path) }, { u"status"_s, status },
        { u"delay_ms"_s, delayMs }, { u"content_type"_s, QString::fromLatin1(canned.contentType) },
        { u"body"_s, QString::fromUtf8(canned.body) },
        { u"location"_s, canned.location.isEmpty() ? QJsonValue() : QString::fromLatin1(canned.location) } };
}

} // namespace

// The local workspace as clients meet it: the proof-key sign-in, sessions and
// their CSRF tokens, and the test controls that client tests build on.
class TestWorkspaceService : public QObject {
    Q_OBJECT

    std::unique_ptr<TestWorkspace> m_ws;
    QString m_token;

    TestWorkspace::Answer get(const QString &path) { return m_ws->send("GET", path, m_token, {}); }

private slots:
    void initTestCase()
    {
        m_ws = std::make_unique<TestWorkspace>();
        QVERIFY2(m_ws->isRunning(), qPrintable(m_ws->error()));
        m_token = m_ws->signIn(u"maren@halvard.example"_s);
        QVERIFY(!m_token.isEmpty());
    }

    void cleanup() { m_ws->clearFaults(); }

    // The browser's way, with RFC 7636's worked example so that S256 is
    // checked apart from the helper the other tests use: the page links each
    // person, the chosen link hands the app a code, and the code with its
    // verifier signs in exactly once.
    void choosingOnThePageSignsIn()
    {
        const QString verifier = u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s;
        const QString challenge = u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"_s;
        const QString start = u"api/mobile/start?challenge="_s;
        const QString page = QString::fromUtf8(m_ws->send("GET", start + challenge).body);
        const QString choose = u"api/mobile/start/choose?challenge=%1&person=p-tomas"_s.arg(challenge);
        QVERIFY(QString(page).replace("&amp;"_L1, "&"_L1).contains(u"/"_s + choose));
        for (const QString &bad : QStringList { challenge.chopped(1), challenge.chopped(1) + "%2B"_L1 })
            QCOMPARE(m_ws->send("GET", start + bad).status, 400);

        const QByteArray location = m_ws->send("GET", choose).header("Location");
        QVERIFY2(location.startsWith("pilo-tarn://auth?code="), location.data());
        const QString code = QUrlQuery(QUrl(QString::fromUtf8(location))).queryItemValue(u"code"_s, QUrl::FullyDecoded);
        const TestWorkspace::Answer answer = exchange(*m_ws, code, verifier);
        QCOMPARE(answer.status, 200);
        const QJsonObject cookie = answer.json().value("cookie"_L1).toObject();
        QCOMPARE(cookie.value("name"_L1).toString(), u"tarn_session"_s);
        QCOMPARE(m_ws->session(cookie.value("value"_L1).toString()).value("id"_L1).toString(), u"p-tomas"_s);
        QCOMPARE(exchange(*m_ws, code, verifier).json().value("error"_L1).toString(), expired);
    }

    // After a failed verifier the code is spent: a correct retry fails too.
    void exchangeFailures_data()
    {
        QTest::addColumn<ExchangeRow>("row");
        const ExchangeRow rows[] = {
            { "wrong verifier", R"({"code":"$CODE","verifier":"$OTHER"})", unverified, true },
            { "verifier is the challenge", R"({"code":"$CODE","verifier":"$CHALLENGE"})", unverified, true },
            { "no verifier", R"({"code":"$CODE"})", unverified, true },
            { "unknown code", R"({"code":"$CODE-x","verifier":"$VERIFIER"})", expired, false },
            { "not JSON", "code=$CODE&verifier=$VERIFIER", expired, false },
        };
        for (const ExchangeRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void exchangeFailures()
    {
        QFETCH(ExchangeRow, row);
        const QString verifier = TestWorkspace::makeVerifier();
        const QString challenge = TestWorkspace::challengeOf(verifier);
        const QString code = m_ws->signInCode(u"priya@halvard.example"_s, challenge);
        QVERIFY(!code.isEmpty());
        QByteArray body = row.body;
        body.replace("$CODE", code.toUtf8())
            .replace("$VERIFIER", verifier.toUtf8())
            .replace("$OTHER", TestWorkspace::makeVerifier().toUtf8())
            .replace("$CHALLENGE", challenge.toUtf8());

        const TestWorkspace::Answer answer
            = m_ws->send("POST", u"api/mobile/exchange"_s, body, { { "Content-Type", "application/json" } });
        QCOMPARE(answer.status, 400);
        QCOMPARE(answer.json(), QJsonObject({ { u"error"_s, row.message } }));
        QCOMPARE(exchange(*m_ws, code, verifier).status, row.codeSpent ? 400 : 200);
    }

    void expiredCodeIsRefused()
    {
        TestWorkspace ws({ u"--code-ttl"_s, u"0"_s });
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        const QString verifier = TestWorkspace::makeVerifier();
        const QString code = ws.signInCode(u"maren@halvard.example"_s, TestWorkspace::challengeOf(verifier));
        QVERIFY(!code.isEmpty());
        QCOMPARE(exchange(ws, code, verifier).json().value("error"_L1).toString(), expired);
    }

    // Every endpoint needs a live session and every change its CSRF token;
    // the other ways of falling short are tried on one endpoint each.
    void refusals_data()
    {
        QTest::addColumn<RefusalRow>("row");
        for (const Endpoint &e : authenticated) {
            QTest::addRow("%s %s, no cookie", e.method.data(), qPrintable(e.path)) << RefusalRow { e, Lack::cookie };
            if (e.method == "GET")
                continue;
            QTest::addRow("%s %s, no CSRF", e.method.data(), qPrintable(e.path)) << RefusalRow { e, Lack::csrf };
            QTest::addRow("%s %s, wrong CSRF", e.method.data(), qPrintable(e.path))
                << RefusalRow { e, Lack::rightCSRF };
        }
        QTest::addRow("unknown token") << RefusalRow { authenticated[0], Lack::knownToken };
        QTest::addRow("ended token") << RefusalRow { authenticated[0], Lack::liveToken };
        QTest::addRow("token under a lookalike cookie") << RefusalRow { authenticated[0], Lack::cookieName };
        QTest::addRow("another session's CSRF") << RefusalRow { authenticated[3], Lack::ownCSRF };
    }
    void refusals()
    {
        QFETCH(RefusalRow, row);
        const Signed me = signIn(*m_ws, u"priya@halvard.example"_s);
        const QByteArray cookie = "tarn_session=" + me.token.toUtf8();
        const TestWorkspace::Headers right { { "Content-Type", "application/json" }, { "Cookie", cookie },
            { "X-CSRF-Token", me.csrf.toUtf8() } };
        TestWorkspace::Headers headers = right;
        if (row.lack == Lack::cookie)
            headers.removeAt(1);
        else if (row.lack == Lack::knownToken)
            headers[1].second = "tarn_session=" + TestWorkspace::makeVerifier().toUtf8();
        else if (row.lack == Lack::cookieName)
            headers[1].second = "old_" + cookie;
        else if (row.lack == Lack::csrf)
            headers.removeAt(2);
        else if (row.lack == Lack::rightCSRF)
            headers[2].second = me.csrf.chopped(1).toUtf8() + (me.csrf.endsWith('x'_L1) ? "y" : "x");
        else if (row.lack == Lack::ownCSRF)
            headers[2].second = signIn(*m_ws, u"priya@halvard.example"_s).csrf.toUtf8();
        if (row.lack == Lack::liveToken) {
            const Signed gone = signIn(*m_ws, u"priya@halvard.example"_s);
            QCOMPARE(call(*m_ws, gone, "POST", u"api/logout"_s).status, 200);
            headers = { { "Cookie", "tarn_session=" + gone.token.toUtf8() }, { "X-CSRF-Token", gone.csrf.toUtf8() } };
        }

        const Endpoint &e = row.endpoint;
        const TestWorkspace::Answer refused = m_ws->send(e.method, e.path, e.body, headers);
        const bool signedOut = row.lack < Lack::csrf;
        QCOMPARE(refused.status, signedOut ? 401 : 403);
        QCOMPARE(refused.json().value("error"_L1).toString(),
            signedOut ? u"Sign in to continue."_s : u"The request was refused (CSRF check failed)."_s);
        // Refused means not done: the session is still live and takes the request.
        QCOMPARE(m_ws->session(me.token).value("csrf"_L1).toString(), me.csrf);
        QCOMPARE(m_ws->send(e.method, e.path, e.body, right).status, 200);
    }

    // Logging out ends only this session; ending the others ends and counts
    // this person's live ones and keeps this one and everyone else's.
    void endingSessions()
    {
        const Signed a = signIn(*m_ws, u"sam@halvard.example"_s);
        const Signed b = signIn(*m_ws, u"sam@halvard.example"_s);
        const Signed c = signIn(*m_ws, u"sam@halvard.example"_s);
        const QString colleague = m_ws->signIn(u"jonah@halvard.example"_s);
        QCOMPARE(call(*m_ws, a, "POST", u"api/logout"_s).json(), QJsonObject({ { u"ok"_s, true } }));
        QVERIFY(m_ws->session(a.token).isEmpty());
        QVERIFY(!m_ws->session(c.token).isEmpty());

        const TestWorkspace::Answer answer = call(*m_ws, b, "DELETE", u"api/team/me/sessions"_s);
        QCOMPARE(answer.json(), QJsonObject({ { u"ok"_s, true }, { u"signed_out"_s, 1 } }));
        QVERIFY(m_ws->session(c.token).isEmpty());
        QVERIFY(!m_ws->session(b.token).isEmpty());
        QVERIFY(!m_ws->session(colleague).isEmpty());
    }

    // Tokens are 256 random bits, kept only hashed (session and CSRF
    // tokens alike): in neither the data folder nor the output.
    void tokensAreNeverKept()
    {
        const QString token = m_ws->signIn(u"tomas@halvard.example"_s);
        QCOMPARE(QByteArray::fromBase64(token.toLatin1(), QByteArray::Base64UrlEncoding).size(), 32);
        const QString csrf = m_ws->session(token).value("csrf"_L1).toString();
        QVERIFY(csrf.size() >= 32);
        QByteArrayList kept { m_ws->output() };
        for (QDirIterator files(m_ws->dataPath(), QDir::Files); files.hasNext();) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            kept.append(file.readAll());
        }
        for (const QByteArray &bytes : std::as_const(kept))
            QVERIFY(!bytes.contains(token.toLatin1()) && !bytes.contains(csrf.toLatin1()));
    }

    // The settings store only what the app offers (its own lists).
    void appearanceChoices_data()
    {
        QTest::addColumn<QJsonObject>("body");
        QTest::addColumn<QString>("error");
        QTest::addRow("offered") << QJsonObject { { u"text_size"_s, u"larger"_s } } << QString();
        QTest::addRow("another list's") << QJsonObject { { u"text_size"_s, u"paper"_s } }
                                        << u"That text size is not one Pilo Tarn offers."_s;
        QTest::addRow("none") << QJsonObject { { u"text_size"_s, 7 } } << u"Choose a text size."_s;
    }
    void appearanceChoices()
    {
        QFETCH(QJsonObject, body);
        QFETCH(QString, error);
        const Signed who = signIn(*m_ws, u"maren@halvard.example"_s);
        const TestWorkspace::Answer answer = m_ws->send(
            "PATCH", u"api/team/me/text-size"_s, who.token, body, { { "X-CSRF-Token", who.csrf.toLatin1() } });
        QCOMPARE(answer.json().value("error"_L1).toString(), error);
    }

    // A canned answer comes back exactly as set, for the next request of its
    // method and path (whatever the query) only; then answers are real again.
    void cannedAnswers_data()
    {
        QTest::addColumn<CannedRow>("row");
        const CannedRow rows[] = {
            { "HTML page", 200, "text/html", "<html>Sign in</html>", {} },
            { "redirect to another host", 302, "text/plain", {}, "https://elsewhere.invalid/x" },
            { "redirect on this host", 302, "text/html", "<a href=/login>", "/login" },
        };
        for (const CannedRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void cannedAnswers()
    {
        QFETCH(CannedRow, row);
        m_ws->setFault(fault("/api/session", row.status, 0, row));
        QCOMPARE(m_ws->send("POST", u"api/session"_s, m_token, {}).status, 404);
        QCOMPARE(get(u"api/session/x"_s).status, 404);
        QCOMPARE(get(u"api/sess"_s).status, 404);

        const TestWorkspace::Answer answer = get(u"api/session?after=3"_s);
        QCOMPARE(answer.status, row.status);
        QCOMPARE(answer.header("Content-Type"), row.contentType);
        QCOMPARE(answer.body, row.body);
        QCOMPARE(answer.header("Location"), row.location);
        QCOMPARE(get(u"api/session"_s).json().value("id"_L1).toString(), u"p-maren"_s);
    }

    // A client that leaves while its answer is held must not take the
    // server down when the answer comes due.
    void clientLeavingDuringDelay()
    {
        m_ws->setFault(fault("/api/session", 500, 200));
        {
            QNetworkAccessManager network;
            QNetworkRequest request(m_ws->url().resolved(QUrl(u"api/session"_s)));
            request.setSslConfiguration(m_ws->sslConfiguration());
            QNetworkReply *reply = network.get(request);
            QSignalSpy done(reply, &QNetworkReply::finished);
            QTimer::singleShot(50, reply, &QNetworkReply::abort);
            QVERIFY(done.wait(5000));
        }
        // Outlasts the held answer, so its moment has passed when this returns.
        m_ws->setFault(fault("/api/team/me", 204, 600));
        QCOMPARE(get(u"api/team/me"_s).status, 204);
        QCOMPARE(get(u"api/session"_s).status, 200);
    }

    void controlsNeedTheOption()
    {
        TestWorkspace plain({}, TestWorkspace::Faults::Off);
        QVERIFY2(plain.isRunning(), qPrintable(plain.error()));
        const std::pair<QByteArray, QString> controls[] = { { "POST", u"api/test/faults"_s },
            { "DELETE", u"api/test/faults"_s }, { "GET", u"api/test/requests"_s }, { "DELETE", u"api/test/requests"_s },
            { "GET", u"api/test/sign-in-code?email=maren@halvard.example"_s } };
        const QByteArray body = R"({"method":"GET","path":"/api/session","status":500})";
        for (const auto &[method, path] : controls)
            QCOMPARE(plain.send(method, path, body, { { "Content-Type", "application/json" } }).status, 404);
        QCOMPARE(plain.send("GET", u"api/session"_s).status, 401);
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceService)
#include "tst_workspace.moc"
