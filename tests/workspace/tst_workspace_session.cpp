#include "support/TestWorkspace.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString signInRequired = u"Sign in to continue."_s;
const QString csrfRefused = u"The request was refused (CSRF check failed)."_s;

struct Endpoint {
    const char *method;
    const char *path;
    const char *body;
};

// Every endpoint that needs a session, with a body it would accept.
const Endpoint authenticated[] = {
    { "GET", "api/session", "" },
    { "POST", "api/logout", "" },
    { "DELETE", "api/team/me/sessions", "" },
    { "PATCH", "api/team/me/accent", R"({"accent":"teal"})" },
    { "PATCH", "api/team/me/text-size", R"({"text_size":"large"})" },
    { "PATCH", "api/team/me/appearance", R"({"background":"paper"})" },
    { "POST", "api/native/google/start", R"({"service":"gmail"})" },
};

TestWorkspace::Headers headersFor(const QString &token, const std::optional<QString> &csrf, bool json)
{
    TestWorkspace::Headers headers;
    if (!token.isEmpty())
        headers.append({ QByteArray("Cookie"), "tarn_session=" + token.toUtf8() });
    if (csrf)
        headers.append({ QByteArray("X-CSRF-Token"), csrf->toUtf8() });
    if (json)
        headers.append({ QByteArray("Content-Type"), QByteArray("application/json") });
    return headers;
}

} // namespace

class TestWorkspaceSession : public QObject {
    Q_OBJECT

    std::unique_ptr<TestWorkspace> m_ws;

    // A signed-in session: its token and its CSRF token.
    struct Signed {
        QString token;
        QString csrf;
    };

    Signed signIn(const QString &email)
    {
        const QString token = m_ws->signIn(email);
        return { token, m_ws->session(token).value("csrf"_L1).toString() };
    }

    TestWorkspace::Answer call(
        const Signed &who, const QByteArray &method, const QString &path, const QJsonObject &body = {})
    {
        return m_ws->send(method, path, who.token, body, { { "X-CSRF-Token", who.csrf.toUtf8() } });
    }

private slots:
    void initTestCase()
    {
        m_ws = std::make_unique<TestWorkspace>();
        QVERIFY2(m_ws->isRunning(), qPrintable(m_ws->error()));
    }

    void refusedWithoutLiveSession_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("credential");
        for (const char *credential : { "none", "unknown", "ended", "empty", "other cookie" }) {
            for (const Endpoint &e : authenticated) {
                QTest::addRow("%s %s, %s", e.method, e.path, credential)
                    << QByteArray(e.method) << QString::fromLatin1(e.path) << QByteArray(e.body)
                    << QString::fromLatin1(credential);
            }
        }
    }
    void refusedWithoutLiveSession()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(QByteArray, body);
        QFETCH(QString, credential);

        TestWorkspace::Headers headers;
        if (credential == "unknown"_L1) {
            headers = headersFor(TestWorkspace::makeVerifier(), u"x"_s, true);
        } else if (credential == "ended"_L1) {
            const Signed ended = signIn(u"tomas@halvard.example"_s);
            QCOMPARE(call(ended, "POST", u"api/logout"_s).status, 200);
            headers = headersFor(ended.token, ended.csrf, true);
        } else if (credential == "empty"_L1) {
            headers = { { "Cookie", "tarn_session=" }, { "X-CSRF-Token", "" } };
        } else if (credential == "other cookie"_L1) {
            // The right token under another cookie's name is no session.
            const Signed live = signIn(u"tomas@halvard.example"_s);
            headers = { { "Cookie", "session=" + live.token.toUtf8() }, { "X-CSRF-Token", live.csrf.toUtf8() } };
        }
        const TestWorkspace::Answer answer = m_ws->send(method, path, body, headers);
        QCOMPARE(answer.status, 401);
        QCOMPARE(answer.header("Content-Type"), "application/json");
        QCOMPARE(answer.json(), QJsonObject({ { u"error"_s, signInRequired } }));
    }

    void mutationsNeedTheSessionsCSRF_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("csrf");
        for (const char *csrf : { "missing", "empty", "wrong", "another session's", "in other case" }) {
            for (const Endpoint &e : authenticated) {
                if (qstrcmp(e.method, "GET") == 0)
                    continue;
                QTest::addRow("%s %s, %s", e.method, e.path, csrf)
                    << QByteArray(e.method) << QString::fromLatin1(e.path) << QByteArray(e.body)
                    << QString::fromLatin1(csrf);
            }
        }
    }
    void mutationsNeedTheSessionsCSRF()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(QByteArray, body);
        QFETCH(QString, csrf);

        const Signed me = signIn(u"priya@halvard.example"_s);
        std::optional<QString> sent;
        if (csrf == "empty"_L1)
            sent = QString();
        else if (csrf == "wrong"_L1)
            sent = me.csrf + 'x'_L1;
        else if (csrf == "another session's"_L1)
            sent = signIn(u"priya@halvard.example"_s).csrf;
        else if (csrf == "in other case"_L1)
            sent = me.csrf.toUpper() == me.csrf ? me.csrf.toLower() : me.csrf.toUpper();

        const TestWorkspace::Answer refused = m_ws->send(method, path, body, headersFor(me.token, sent, true));
        QCOMPARE(refused.status, 403);
        QCOMPARE(refused.json(), QJsonObject({ { u"error"_s, csrfRefused } }));
        // Refused means not done: the session is still live.
        QCOMPARE(m_ws->session(me.token).value("csrf"_L1).toString(), me.csrf);

        const TestWorkspace::Answer accepted = m_ws->send(method, path, body, headersFor(me.token, me.csrf, true));
        QCOMPARE(accepted.status, 200);
    }

    void readsNeedNoCSRF()
    {
        const Signed me = signIn(u"jonah@halvard.example"_s);
        const TestWorkspace::Answer answer = m_ws->send("GET", u"api/session"_s, me.token, {});
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.header("Content-Type"), "application/json");
    }

    // Every key is there (settings null until saved), and the people differ
    // where the client's access rules look.
    void sessionRecordIsThePerson_data()
    {
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("role");
        QTest::addColumn<bool>("owner");
        QTest::addColumn<bool>("booksOwner");
        QTest::addColumn<QStringList>("hasApps");
        QTest::addColumn<QStringList>("lacksApps");
        QTest::addColumn<int>("appCount");
        QTest::addRow("owner") << u"maren@halvard.example"_s << u"p-maren"_s << u"admin"_s << true << true
                               << QStringList { u"Home"_s, u"Books"_s, u"Market Scan"_s, u"People"_s } << QStringList {}
                               << 16;
        QTest::addRow("books owner") << u"tomas@halvard.example"_s << u"p-tomas"_s << u"manager"_s << false << true
                                     << QStringList { u"Home"_s, u"Books"_s } << QStringList { u"Payments"_s } << 10;
        QTest::addRow("no Books") << u"priya@halvard.example"_s << u"p-priya"_s << u"member"_s << false << false
                                  << QStringList { u"Home"_s } << QStringList { u"Books"_s } << 7;
        QTest::addRow("no Home") << u"ada@halvard.example"_s << u"p-ada"_s << u"contractor"_s << false << false
                                 << QStringList { u"Sales"_s, u"Docs"_s } << QStringList { u"Home"_s } << 2;
    }
    void sessionRecordIsThePerson()
    {
        QFETCH(QString, email);
        QFETCH(QString, id);
        QFETCH(QString, role);
        QFETCH(bool, owner);
        QFETCH(bool, booksOwner);
        QFETCH(QStringList, hasApps);
        QFETCH(QStringList, lacksApps);
        QFETCH(int, appCount);
        TestWorkspace fresh;
        QVERIFY2(fresh.isRunning(), qPrintable(fresh.error()));
        const QJsonObject record = fresh.session(fresh.signIn(email));
        QCOMPARE(record.keys(),
            QStringList({ u"accent"_s, u"apps"_s, u"background"_s, u"books_owner"_s, u"csrf"_s, u"email"_s, u"id"_s,
                u"name"_s, u"owner"_s, u"role"_s, u"text_size"_s }));
        QCOMPARE(record.value("id"_L1).toString(), id);
        QCOMPARE(record.value("email"_L1).toString(), email);
        QCOMPARE(record.value("role"_L1).toString(), role);
        QCOMPARE(record.value("owner"_L1), QJsonValue(owner));
        QCOMPARE(record.value("books_owner"_L1), QJsonValue(booksOwner));
        QVERIFY(record.value("csrf"_L1).toString().size() >= 22);
        const QStringList apps = record.value("apps"_L1).toVariant().toStringList();
        QCOMPARE(apps.size(), appCount);
        for (const QString &app : hasApps)
            QVERIFY2(apps.contains(app), qPrintable(app));
        for (const QString &app : lacksApps)
            QVERIFY2(!apps.contains(app), qPrintable(app));
        for (const char *setting : { "accent", "text_size", "background" })
            QVERIFY(record.value(QLatin1StringView(setting)).isNull());
    }

    void eachSessionHasItsOwnCSRF()
    {
        const Signed a = signIn(u"sam@halvard.example"_s);
        const Signed b = signIn(u"sam@halvard.example"_s);
        QVERIFY(!a.csrf.isEmpty());
        QVERIFY(a.csrf != b.csrf);
        QVERIFY(a.token != b.token);
    }

    void logoutEndsOnlyThisSession()
    {
        const Signed a = signIn(u"maren@halvard.example"_s);
        const Signed b = signIn(u"maren@halvard.example"_s);
        const TestWorkspace::Answer answer = call(a, "POST", u"api/logout"_s);
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.json(), QJsonObject({ { u"ok"_s, true } }));
        QCOMPARE(m_ws->send("GET", u"api/session"_s, a.token, {}).status, 401);
        QCOMPARE(m_ws->session(b.token).value("id"_L1).toString(), u"p-maren"_s);
        // Ending an ended session is a sign-in question, not a second logout.
        QCOMPARE(call(a, "POST", u"api/logout"_s).status, 401);
    }

    void endingOtherSessionsCountsThem_data()
    {
        QTest::addColumn<int>("others");
        QTest::addRow("none") << 0;
        QTest::addRow("one") << 1;
        QTest::addRow("three") << 3;
    }
    void endingOtherSessionsCountsThem()
    {
        QFETCH(int, others);
        TestWorkspace ws;
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        const QString me = ws.signIn(u"tomas@halvard.example"_s);
        const QString csrf = ws.session(me).value("csrf"_L1).toString();
        QStringList mine;
        for (int i = 0; i < others; ++i)
            mine.append(ws.signIn(u"tomas@halvard.example"_s));
        const QString colleague = ws.signIn(u"priya@halvard.example"_s);
        const QString loggedOut = ws.signIn(u"tomas@halvard.example"_s);
        const QString loggedOutCsrf = ws.session(loggedOut).value("csrf"_L1).toString();
        QCOMPARE(ws.send("POST", u"api/logout"_s, loggedOut, {}, { { "X-CSRF-Token", loggedOutCsrf.toUtf8() } }).status,
            200);

        const TestWorkspace::Answer answer
            = ws.send("DELETE", u"api/team/me/sessions"_s, me, {}, { { "X-CSRF-Token", csrf.toUtf8() } });
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.json(), QJsonObject({ { u"ok"_s, true }, { u"signed_out"_s, others } }));
        for (const QString &token : mine)
            QCOMPARE(ws.send("GET", u"api/session"_s, token, {}).status, 401);
        QCOMPARE(ws.send("GET", u"api/session"_s, me, {}).status, 200);
        QCOMPARE(ws.send("GET", u"api/session"_s, colleague, {}).status, 200);

        const TestWorkspace::Answer again
            = ws.send("DELETE", u"api/team/me/sessions"_s, me, {}, { { "X-CSRF-Token", csrf.toUtf8() } });
        QCOMPARE(again.json().value("signed_out"_L1).toInt(-1), 0);
    }

    void appearanceIsSavedPerPerson_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        QTest::addColumn<int>("status");
        const QString longest(40, 'x'_L1);
        const struct {
            const char *path;
            const char *key;
        } settings[] = { { "api/team/me/accent", "accent" }, { "api/team/me/text-size", "text_size" },
            { "api/team/me/appearance", "background" } };
        for (const auto &s : settings) {
            const QString path = QString::fromLatin1(s.path);
            const QString key = QString::fromLatin1(s.key);
            QTest::addRow("%s plain", s.key) << path << key << QJsonValue(u"ocean"_s) << 200;
            QTest::addRow("%s 40 characters", s.key) << path << key << QJsonValue(longest) << 200;
            QTest::addRow("%s 41 characters", s.key) << path << key << QJsonValue(longest + 'x'_L1) << 400;
            QTest::addRow("%s empty", s.key) << path << key << QJsonValue(u""_s) << 400;
            QTest::addRow("%s blank", s.key) << path << key << QJsonValue(u"   "_s) << 400;
            QTest::addRow("%s number", s.key) << path << key << QJsonValue(3) << 400;
            QTest::addRow("%s null", s.key) << path << key << QJsonValue(QJsonValue::Null) << 400;
            QTest::addRow("%s under another key", s.key) << path << u"colour"_s << QJsonValue(u"ocean"_s) << 400;
        }
    }
    void appearanceIsSavedPerPerson()
    {
        QFETCH(QString, path);
        QFETCH(QString, key);
        QFETCH(QJsonValue, value);
        QFETCH(int, status);
        TestWorkspace ws;
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        const QString me = ws.signIn(u"sam@halvard.example"_s);
        const QString other = ws.signIn(u"jonah@halvard.example"_s);
        const QString csrf = ws.session(me).value("csrf"_L1).toString();

        const TestWorkspace::Answer answer
            = ws.send("PATCH", path, me, QJsonObject { { key, value } }, { { "X-CSRF-Token", csrf.toUtf8() } });
        QCOMPARE(answer.status, status);
        const QStringList fields { u"accent"_s, u"text_size"_s, u"background"_s };
        const QJsonObject mine = ws.session(me);
        if (status == 200) {
            QCOMPARE(answer.json(), QJsonObject({ { u"ok"_s, true } }));
            QCOMPARE(mine.value(key), value);
        } else {
            QVERIFY(!answer.json().value("error"_L1).toString().isEmpty());
        }
        // Nothing else changed: not the other settings, not another person's.
        for (const QString &field : fields) {
            if (field != key || status != 200)
                QCOMPARE(mine.value(field), QJsonValue(QJsonValue::Null));
            QCOMPARE(ws.session(other).value(field), QJsonValue(QJsonValue::Null));
        }
    }

    void googleConnection()
    {
        const Signed me = signIn(u"maren@halvard.example"_s);
        const TestWorkspace::Answer start
            = call(me, "POST", u"api/native/google/start"_s, QJsonObject { { u"service"_s, u"gmail"_s } });
        QCOMPARE(start.status, 200);
        const QUrl url(start.json().value("url"_L1).toString());
        QCOMPARE(url.scheme(), u"https"_s);
        QCOMPARE(url.host(), m_ws->url().host());
        QCOMPARE(url.port(), m_ws->url().port());
        QCOMPARE(url.path(), u"/api/native/google/start"_s);
        const QUrlQuery query(url);
        QCOMPARE(query.queryItemValue(u"service"_s), u"gmail"_s);
        const QString state = query.queryItemValue(u"state"_s);
        QVERIFY(state.size() >= 22);

        // The browser opens the page with no session and follows "Connect".
        const TestWorkspace::Answer page = m_ws->send("GET", url.toString());
        QCOMPARE(page.status, 200);
        QVERIFY(page.body.contains(">Connect<"));
        const QString connect = u"api/native/google/start/connect?"_s + query.toString(QUrl::FullyEncoded);
        QVERIFY(QString::fromUtf8(page.body).replace("&amp;"_L1, "&"_L1).contains(u"/"_s + connect));

        const TestWorkspace::Answer done = m_ws->send("GET", connect);
        QCOMPARE(done.status, 302);
        QCOMPARE(done.header("Location"), "pilo-tarn://google-connected?service=gmail");

        // A state works once.
        const TestWorkspace::Answer again = m_ws->send("GET", connect);
        QCOMPARE(again.status, 302);
        QVERIFY2(again.header("Location").startsWith("pilo-tarn://google-connected?error="),
            again.header("Location").constData());
    }

    void googleConnectionRefusesForeignStates_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addRow("unknown state") << u"service=gmail&state=nothing-like-it"_s;
        QTest::addRow("no state") << u"service=gmail"_s;
        QTest::addRow("another service") << u"service=drive&state=$STATE"_s;
    }
    void googleConnectionRefusesForeignStates()
    {
        QFETCH(QString, query);
        const Signed me = signIn(u"tomas@halvard.example"_s);
        const TestWorkspace::Answer start
            = call(me, "POST", u"api/native/google/start"_s, QJsonObject { { u"service"_s, u"gmail"_s } });
        const QString state = QUrlQuery(QUrl(start.json().value("url"_L1).toString())).queryItemValue(u"state"_s);
        const TestWorkspace::Answer answer
            = m_ws->send("GET", u"api/native/google/start/connect?"_s + query.replace("$STATE"_L1, state));
        QCOMPARE(answer.status, 302);
        const QUrl callback(QString::fromUtf8(answer.header("Location")));
        QCOMPARE(callback.scheme(), u"pilo-tarn"_s);
        QCOMPARE(callback.host(), u"google-connected"_s);
        QVERIFY(!QUrlQuery(callback).queryItemValue(u"error"_s).isEmpty());
        QVERIFY(!QUrlQuery(callback).hasQueryItem(u"service"_s));
    }

    void unknownPathsAreJSON404_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addRow("unknown") << "GET"_ba << u"api/nothing-here"_s;
        QTest::addRow("root") << "GET"_ba << u""_s;
        QTest::addRow("known path, other method") << "DELETE"_ba << u"api/session"_s;
        QTest::addRow("trailing slash") << "GET"_ba << u"api/session/"_s;
        QTest::addRow("deeper") << "GET"_ba << u"api/session/extra"_s;
    }
    void unknownPathsAreJSON404()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        const TestWorkspace::Answer answer = m_ws->send(method, path);
        QCOMPARE(answer.status, 404);
        QCOMPARE(answer.header("Content-Type"), "application/json");
        QCOMPARE(answer.json(), QJsonObject({ { u"error"_s, u"Not found."_s } }));
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceSession)
#include "tst_workspace_session.moc"
