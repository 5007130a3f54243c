#include "support/TestWorkspace.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QJsonObject fault(const char *method, const char *path, int status, const char *contentType, const char *body,
    const QJsonValue &location = QJsonValue::Null, int delayMs = 0, int times = 1)
{
    return { { u"method"_s, QLatin1StringView(method) }, { u"path"_s, QLatin1StringView(path) },
        { u"status"_s, status }, { u"content_type"_s, QLatin1StringView(contentType) },
        { u"body"_s, QString::fromUtf8(body) }, { u"location"_s, location }, { u"delay_ms"_s, delayMs },
        { u"times"_s, times } };
}

} // namespace

class TestWorkspaceFaults : public QObject {
    Q_OBJECT

    std::unique_ptr<TestWorkspace> m_ws;
    QString m_token;

    TestWorkspace::Answer getSession() { return m_ws->send("GET", u"api/session"_s, m_token, {}); }

    QNetworkReply *sendAsync(QNetworkAccessManager &network, const QString &path)
    {
        QNetworkRequest request(m_ws->url().resolved(QUrl(path)));
        request.setSslConfiguration(m_ws->sslConfiguration());
        request.setRawHeader("Cookie", "tarn_session=" + m_token.toUtf8());
        return network.get(request);
    }

private slots:
    void initTestCase()
    {
        m_ws = std::make_unique<TestWorkspace>();
        QVERIFY2(m_ws->isRunning(), qPrintable(m_ws->error()));
        m_token = m_ws->signIn(u"maren@halvard.example"_s);
        QVERIFY(!m_token.isEmpty());
    }

    void cleanup()
    {
        m_ws->clearFaults();
        m_ws->clearRequests();
    }

    // The canned answers client tests need: each comes back exactly as set,
    // once, and the next request is answered for real.
    void cannedAnswers_data()
    {
        QTest::addColumn<QJsonObject>("fault");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("location");
        QTest::addRow("500, empty body") << fault("GET", "/api/session", 500, "text/plain", "") << 500
                                         << "text/plain"_ba << QByteArray() << QByteArray();
        QTest::addRow("200 HTML page") << fault("GET", "/api/session", 200, "text/html", "<html>Sign in</html>") << 200
                                       << "text/html"_ba
                                       << "<html>Sign in</html>"_ba << QByteArray();
        QTest::addRow("200 carrying error")
            << fault("GET", "/api/session", 200, "application/json", R"({"error":"Books are closed."})") << 200
            << "application/json"_ba
            << R"({"error":"Books are closed."})"_ba << QByteArray();
        QTest::addRow("redirect to another host")
            << fault("GET", "/api/session", 302, "text/plain", "", u"https://elsewhere.invalid/x"_s) << 302
            << "text/plain"_ba << QByteArray() << "https://elsewhere.invalid/x"_ba;
        QTest::addRow("redirect to sign-in on this host")
            << fault("GET", "/api/session", 302, "text/html", "<a href=/login>", u"/login"_s) << 302 << "text/html"_ba
            << "<a href=/login>"_ba
            << "/login"_ba;
    }
    void cannedAnswers()
    {
        QFETCH(QJsonObject, fault);
        QFETCH(int, status);
        QFETCH(QByteArray, contentType);
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, location);

        m_ws->setFault(fault);
        const TestWorkspace::Answer answer = getSession();
        QCOMPARE(answer.status, status);
        QCOMPARE(answer.header("Content-Type"), contentType);
        QCOMPARE(answer.body, body);
        QCOMPARE(answer.header("Location"), location);

        const TestWorkspace::Answer real = getSession();
        QCOMPARE(real.status, 200);
        QCOMPARE(real.json().value("id"_L1).toString(), u"p-maren"_s);
    }

    void faultCounts_data()
    {
        QTest::addColumn<int>("times");
        QTest::addColumn<int>("caught");
        QTest::addRow("once") << 1 << 1;
        QTest::addRow("three times") << 3 << 3;
        QTest::addRow("until cleared") << 0 << 6;
    }
    void faultCounts()
    {
        QFETCH(int, times);
        QFETCH(int, caught);
        m_ws->setFault(fault("GET", "/api/session", 503, "text/plain", "", QJsonValue::Null, 0, times));
        for (int i = 0; i < caught; ++i)
            QCOMPARE(getSession().status, 503);
        if (times == 0)
            m_ws->clearFaults();
        QCOMPARE(getSession().status, 200);
    }

    // Which requests a fault on "GET /api/session" catches.
    void faultMatching_data()
    {
        QTest::addColumn<QByteArray>("faultMethod");
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("caught");
        QTest::addRow("same") << "GET"_ba
                              << "GET"_ba << u"api/session"_s << true;
        QTest::addRow("query ignored") << "GET"_ba
                                       << "GET"_ba << u"api/session?after=3&q=x"_s << true;
        QTest::addRow("method named in lower case") << "get"_ba
                                                    << "GET"_ba << u"api/session"_s << true;
        QTest::addRow("other method") << "GET"_ba
                                      << "POST"_ba << u"api/session"_s << false;
        QTest::addRow("longer path") << "GET"_ba
                                     << "GET"_ba << u"api/session/x"_s << false;
        QTest::addRow("trailing slash") << "GET"_ba
                                        << "GET"_ba << u"api/session/"_s << false;
        QTest::addRow("prefix only") << "GET"_ba
                                     << "GET"_ba << u"api/sess"_s << false;
    }
    void faultMatching()
    {
        QFETCH(QByteArray, faultMethod);
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(bool, caught);
        m_ws->setFault(fault(faultMethod.constData(), "/api/session", 418, "text/plain", "teapot"));
        const TestWorkspace::Answer answer = m_ws->send(method, path, m_token, {});
        QCOMPARE(answer.status == 418, caught);
    }

    void faultOnUnknownPathAnswers()
    {
        m_ws->setFault(fault("GET", "/api/future/feature", 200, "application/json", R"({"items":[]})"));
        const TestWorkspace::Answer answer = m_ws->send("GET", u"api/future/feature"_s);
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.body, R"({"items":[]})"_ba);
    }

    void badFaultsAreRefused_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addRow("not JSON") << "method=GET"_ba;
        QTest::addRow("no path") << R"({"method":"GET","status":500})"_ba;
        QTest::addRow("relative path") << R"({"method":"GET","path":"api/session","status":500})"_ba;
        QTest::addRow("no method") << R"({"path":"/api/session","status":500})"_ba;
        QTest::addRow("neither status nor delay") << R"({"method":"GET","path":"/api/session"})"_ba;
        QTest::addRow("unsendable status") << R"({"method":"GET","path":"/api/session","status":299})"_ba;
        QTest::addRow("negative times") << R"({"method":"GET","path":"/api/session","status":500,"times":-1})"_ba;
        QTest::addRow("fractional delay") << R"({"method":"GET","path":"/api/session","delay_ms":2.5})"_ba;
    }
    void badFaultsAreRefused()
    {
        QFETCH(QByteArray, body);
        const TestWorkspace::Answer answer
            = m_ws->send("POST", u"api/test/faults"_s, body, { { "Content-Type", "application/json" } });
        QCOMPARE(answer.status, 400);
        QVERIFY(!answer.json().value("error"_L1).toString().isEmpty());
        QCOMPARE(getSession().status, 200);
    }

    // A slow answer holds only its own request: another one sent after it is
    // answered first, and the slow one then arrives with the real answer.
    void slowAnswerDoesNotHoldOthers()
    {
        m_ws->clearRequests();
        m_ws->setFault(fault("GET", "/api/session", 0, "", "", QJsonValue::Null, 1500));
        QNetworkAccessManager network;
        QElapsedTimer clock;
        clock.start();
        std::unique_ptr<QNetworkReply> slow(sendAsync(network, u"api/session"_s));
        QSignalSpy slowDone(slow.get(), &QNetworkReply::finished);
        // Held by the server, not merely queued in the client.
        QTRY_VERIFY_WITH_TIMEOUT(!m_ws->requests().isEmpty(), 5000);

        const TestWorkspace::Answer quick = m_ws->send("GET", u"api/team/me/sessions"_s, m_token, {});
        QCOMPARE(quick.status, 404);
        QCOMPARE(slowDone.count(), 0);

        QVERIFY(slowDone.wait(10000));
        QVERIFY(clock.elapsed() >= 1500);
        QCOMPARE(slow->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 200);
        QCOMPARE(QJsonDocument::fromJson(slow->readAll()).object().value("id"_L1).toString(), u"p-maren"_s);
    }

    void delayedCannedAnswer()
    {
        m_ws->setFault(fault("GET", "/api/session", 500, "text/plain", "late", QJsonValue::Null, 300));
        QElapsedTimer clock;
        clock.start();
        const TestWorkspace::Answer answer = getSession();
        QVERIFY(clock.elapsed() >= 300);
        QCOMPARE(answer.status, 500);
        QCOMPARE(answer.body, "late"_ba);
    }

    // A client that leaves while its answer is held must not take the
    // server down when the answer comes due.
    void clientLeavingDuringDelay()
    {
        m_ws->setFault(fault("GET", "/api/session", 0, "", "", QJsonValue::Null, 200));
        {
            QNetworkAccessManager network;
            QNetworkReply *reply = sendAsync(network, u"api/session"_s);
            QSignalSpy done(reply, &QNetworkReply::finished);
            QTimer::singleShot(50, reply, &QNetworkReply::abort);
            QVERIFY(done.wait(5000));
        }
        // Outlasts the held answer, so its moment has passed when this returns.
        m_ws->setFault(fault("GET", "/api/team/me", 204, "text/plain", "", QJsonValue::Null, 600));
        QCOMPARE(m_ws->send("GET", u"api/team/me"_s).status, 204);
        QVERIFY(m_ws->isRunning());
        QCOMPARE(getSession().status, 200);
    }

    void requestLog()
    {
        const QString csrf = m_ws->session(m_token).value("csrf"_L1).toString();
        m_ws->clearRequests();
        (void)m_ws->send("GET", u"api/session?fresh=1"_s, QByteArray(), { { "Accept", "application/json" } });
        (void)m_ws->send("PATCH", u"api/team/me/accent"_s, m_token, QJsonObject { { u"accent"_s, u"teal"_s } },
            { { "X-CSRF-Token", csrf.toUtf8() }, { "Accept", "application/json" } });
        m_ws->setFault(fault("GET", "/api/rooms", 500, "text/plain", ""));
        (void)m_ws->send("GET", u"api/rooms"_s, m_token, {});

        const QJsonArray log = m_ws->requests();
        const QJsonArray expected {
            QJsonObject { { u"method"_s, u"GET"_s }, { u"path"_s, u"/api/session"_s }, { u"query"_s, u"fresh=1"_s },
                { u"cookie"_s, false }, { u"csrf"_s, QJsonValue::Null }, { u"accept"_s, u"application/json"_s },
                { u"content_type"_s, QJsonValue::Null }, { u"body"_s, u""_s } },
            QJsonObject { { u"method"_s, u"PATCH"_s }, { u"path"_s, u"/api/team/me/accent"_s }, { u"query"_s, u""_s },
                { u"cookie"_s, true }, { u"csrf"_s, csrf }, { u"accept"_s, u"application/json"_s },
                { u"content_type"_s, u"application/json"_s }, { u"body"_s, u"{\"accent\":\"teal\"}"_s } },
        };
        // The controls themselves are not logged; the faulted request is.
        QCOMPARE(log.size(), 3);
        QCOMPARE(log.at(0).toObject(), expected.at(0).toObject());
        QCOMPARE(log.at(1).toObject(), expected.at(1).toObject());
        QCOMPARE(log.at(2).toObject().value("path"_L1).toString(), u"/api/rooms"_s);
        QVERIFY(!QJsonDocument(log).toJson().contains(m_token.toUtf8()));

        m_ws->clearRequests();
        QCOMPARE(m_ws->requests(), QJsonArray());
    }

    void controlsNeedTheOption_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addRow("set fault") << "POST"_ba << u"api/test/faults"_s;
        QTest::addRow("clear faults") << "DELETE"_ba << u"api/test/faults"_s;
        QTest::addRow("read log") << "GET"_ba << u"api/test/requests"_s;
        QTest::addRow("clear log") << "DELETE"_ba << u"api/test/requests"_s;
        QTest::addRow("sign-in code") << "GET"_ba << u"api/test/sign-in-code?email=maren@halvard.example"_s;
    }
    void controlsNeedTheOption()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        TestWorkspace plain({}, TestWorkspace::Faults::Off);
        QVERIFY2(plain.isRunning(), qPrintable(plain.error()));
        const QByteArray body = R"({"method":"GET","path":"/api/session","status":500})";
        QCOMPARE(plain.send(method, path, body, { { "Content-Type", "application/json" } }).status, 404);
        QCOMPARE(plain.send("GET", u"api/session"_s).status, 401);
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceFaults)
#include "tst_workspace_faults.moc"
