#include "support/TestWorkspace.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString expired = u"Sign-in expired. Start again."_s;
const QString unverified = u"Sign-in could not be verified. Start again."_s;

struct Person {
    const char *id;
    const char *name;
    const char *email;
    const char *role;
};

const Person company[] = {
    { "p-maren", "Maren Holt", "maren@halvard.example", "admin" },
    { "p-tomas", "Tomas Reyes", "tomas@halvard.example", "manager" },
    { "p-priya", "Priya Nair", "priya@halvard.example", "member" },
    { "p-jonah", "Jonah Whitfield", "jonah@halvard.example", "support" },
    { "p-sam", "Sam Okoro", "sam@halvard.example", "designer" },
    { "p-ada", "Ada Lindqvist", "ada@halvard.example", "contractor" },
};

QString startPath(const QString &challenge)
{
    return u"api/mobile/start?challenge="_s + challenge;
}

// The query item of a pilo-tarn:// callback, decoded.
QString callbackItem(const QByteArray &location, const QString &key)
{
    return QUrlQuery(QUrl(QString::fromUtf8(location))).queryItemValue(key, QUrl::FullyDecoded);
}

QString decodeHtml(QString text)
{
    return text.replace("&amp;"_L1, "&"_L1);
}

} // namespace

class TestWorkspaceSignIn : public QObject {
    Q_OBJECT

private:
    TestWorkspace::Answer exchange(TestWorkspace &ws, const QString &code, const QString &verifier)
    {
        return ws.send(
            "POST", u"api/mobile/exchange"_s, {}, QJsonObject { { u"code"_s, code }, { u"verifier"_s, verifier } });
    }

    std::unique_ptr<TestWorkspace> m_ws;

private slots:
    void initTestCase()
    {
        m_ws = std::make_unique<TestWorkspace>();
        QVERIFY2(m_ws->isRunning(), qPrintable(m_ws->error()));
    }

    void startPageRefusesBadChallenge_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addRow("missing") << u"api/mobile/start"_s;
        QTest::addRow("empty") << startPath({});
        QTest::addRow("42 characters") << startPath(QString(42, 'a'_L1));
        QTest::addRow("44 characters") << startPath(QString(44, 'a'_L1));
        QTest::addRow("standard Base64 plus") << startPath(QString(42, 'a'_L1) + "%2B"_L1);
        QTest::addRow("padding") << startPath(QString(42, 'a'_L1) + "%3D"_L1);
    }
    void startPageRefusesBadChallenge()
    {
        QFETCH(QString, query);
        const TestWorkspace::Answer answer = m_ws->send("GET", query);
        QCOMPARE(answer.status, 400);
        QVERIFY(answer.header("Content-Type").startsWith("text/html"));
        QVERIFY(answer.header("Location").isEmpty());
    }

    void startPageListsEveryone()
    {
        const QString challenge = TestWorkspace::challengeOf(TestWorkspace::makeVerifier());
        const TestWorkspace::Answer answer = m_ws->send("GET", startPath(challenge));
        QCOMPARE(answer.status, 200);
        QVERIFY(answer.header("Content-Type").startsWith("text/html"));
        const QString page = QString::fromUtf8(answer.body);
        for (const Person &p : company) {
            QVERIFY2(page.contains(QLatin1StringView(p.name)), p.name);
            QVERIFY2(page.contains(QLatin1StringView(p.email)), p.email);
            QVERIFY2(page.contains(QLatin1StringView(p.role)), p.role);
            QVERIFY2(decodeHtml(page).contains(
                         u"/api/mobile/start/choose?challenge=%1&person=%2"_s.arg(challenge, QLatin1StringView(p.id))),
                p.id);
        }
        QVERIFY(decodeHtml(page).contains(u"/api/mobile/start/cancel?challenge="_s + challenge));
        QVERIFY(page.contains(">Cancel<"_L1));
    }

    // Choosing on the page gives a code that signs in exactly that person.
    void choosingSignsInThatPerson_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("email");
        for (const Person &p : company)
            QTest::addRow("%s", p.id) << QString::fromLatin1(p.id) << QString::fromLatin1(p.name)
                                      << QString::fromLatin1(p.email);
    }
    void choosingSignsInThatPerson()
    {
        QFETCH(QString, id);
        QFETCH(QString, name);
        QFETCH(QString, email);
        const QString verifier = TestWorkspace::makeVerifier();
        const TestWorkspace::Answer chosen = m_ws->send(
            "GET", u"api/mobile/start/choose?challenge=%1&person=%2"_s.arg(TestWorkspace::challengeOf(verifier), id));
        QCOMPARE(chosen.status, 302);
        const QByteArray location = chosen.header("Location");
        QVERIFY2(location.startsWith("pilo-tarn://auth?code="), location.constData());

        const TestWorkspace::Answer answer = exchange(*m_ws, callbackItem(location, u"code"_s), verifier);
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.header("Content-Type"), "application/json");
        const QJsonObject json = answer.json();
        QCOMPARE(json.value("cookie"_L1).toObject().value("name"_L1).toString(), u"tarn_session"_s);
        QCOMPARE(json.value("user"_L1).toObject().value("name"_L1).toString(), name);
        QCOMPARE(json.value("user"_L1).toObject().value("email"_L1).toString(), email);
        const QString token = json.value("cookie"_L1).toObject().value("value"_L1).toString();
        QCOMPARE(m_ws->session(token).value("id"_L1).toString(), id);
    }

    void choosingUnknownPersonShowsError()
    {
        const QString challenge = TestWorkspace::challengeOf(TestWorkspace::makeVerifier());
        const TestWorkspace::Answer answer
            = m_ws->send("GET", u"api/mobile/start/choose?challenge=%1&person=p-nobody"_s.arg(challenge));
        QCOMPARE(answer.status, 400);
        QVERIFY(answer.header("Location").isEmpty());
    }

    void cancelReturnsTheCancelledError()
    {
        const QString challenge = TestWorkspace::challengeOf(TestWorkspace::makeVerifier());
        const TestWorkspace::Answer answer = m_ws->send("GET", u"api/mobile/start/cancel?challenge="_s + challenge);
        QCOMPARE(answer.status, 302);
        QCOMPARE(answer.header("Location"), "pilo-tarn://auth?error=Sign-in%20was%20cancelled.");
    }

    // RFC 7636's worked example: S256 is Base64url of SHA-256, unpadded.
    void publishedVerifierPairSignsIn()
    {
        const QString code
            = m_ws->signInCode(u"tomas@halvard.example"_s, u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"_s);
        QVERIFY(!code.isEmpty());
        const TestWorkspace::Answer answer = exchange(*m_ws, code, u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s);
        QCOMPARE(answer.status, 200);
    }

    // Each row: what the exchange sends, and what it answers. After a failure
    // the code must be spent: a second, correct attempt fails too.
    void exchangeFailures_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("codeSpent");
        QTest::addRow("wrong verifier") << "{\"code\":\"$CODE\",\"verifier\":\"$OTHER\"}"_ba << unverified << true;
        QTest::addRow("verifier is the challenge")
            << "{\"code\":\"$CODE\",\"verifier\":\"$CHALLENGE\"}"_ba << unverified << true;
        QTest::addRow("no verifier") << "{\"code\":\"$CODE\"}"_ba << unverified << true;
        QTest::addRow("unknown code") << "{\"code\":\"$CODE-x\",\"verifier\":\"$VERIFIER\"}"_ba << expired << false;
        QTest::addRow("no code") << "{\"verifier\":\"$VERIFIER\"}"_ba << expired << false;
        QTest::addRow("code not text") << "{\"code\":7,\"verifier\":\"$VERIFIER\"}"_ba << expired << false;
        QTest::addRow("not JSON") << "code=$CODE&verifier=$VERIFIER"_ba << expired << false;
        QTest::addRow("empty body") << QByteArray() << expired << false;
    }
    void exchangeFailures()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, message);
        QFETCH(bool, codeSpent);
        const QString verifier = TestWorkspace::makeVerifier();
        const QString challenge = TestWorkspace::challengeOf(verifier);
        const QString code = m_ws->signInCode(u"priya@halvard.example"_s, challenge);
        QVERIFY(!code.isEmpty());
        body.replace("$CODE", code.toUtf8())
            .replace("$VERIFIER", verifier.toUtf8())
            .replace("$OTHER", TestWorkspace::makeVerifier().toUtf8())
            .replace("$CHALLENGE", challenge.toUtf8());

        const TestWorkspace::Answer answer
            = m_ws->send("POST", u"api/mobile/exchange"_s, body, { { "Content-Type", "application/json" } });
        QCOMPARE(answer.status, 400);
        QCOMPARE(answer.json().value("error"_L1).toString(), message);
        QVERIFY(!answer.body.contains("cookie"));

        const TestWorkspace::Answer retry = exchange(*m_ws, code, verifier);
        QCOMPARE(retry.status, codeSpent ? 400 : 200);
        if (codeSpent)
            QCOMPARE(retry.json().value("error"_L1).toString(), expired);
    }

    void codeWorksOnce()
    {
        const QString verifier = TestWorkspace::makeVerifier();
        const QString code = m_ws->signInCode(u"sam@halvard.example"_s, TestWorkspace::challengeOf(verifier));
        QCOMPARE(exchange(*m_ws, code, verifier).status, 200);
        const TestWorkspace::Answer again = exchange(*m_ws, code, verifier);
        QCOMPARE(again.status, 400);
        QCOMPARE(again.json().value("error"_L1).toString(), expired);
    }

    void expiredCodeIsRefused()
    {
        TestWorkspace ws({ u"--code-ttl"_s, u"0"_s });
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        const QString verifier = TestWorkspace::makeVerifier();
        const QString code = ws.signInCode(u"maren@halvard.example"_s, TestWorkspace::challengeOf(verifier));
        QVERIFY(!code.isEmpty());
        const TestWorkspace::Answer answer = exchange(ws, code, verifier);
        QCOMPARE(answer.status, 400);
        QCOMPARE(answer.json().value("error"_L1).toString(), expired);
    }

    void autoSignIn_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("id");
        QTest::addRow("owner") << u"owner"_s << u"p-maren"_s;
        QTest::addRow("email") << u"jonah@halvard.example"_s << u"p-jonah"_s;
        QTest::addRow("email in capitals") << u"Ada@Halvard.Example"_s << u"p-ada"_s;
    }
    void autoSignIn()
    {
        QFETCH(QString, option);
        QFETCH(QString, id);
        TestWorkspace ws({ u"--auto-sign-in"_s, option });
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        const QString verifier = TestWorkspace::makeVerifier();
        const TestWorkspace::Answer start = ws.send("GET", startPath(TestWorkspace::challengeOf(verifier)));
        QCOMPARE(start.status, 302);
        const QByteArray location = start.header("Location");
        QVERIFY2(location.startsWith("pilo-tarn://auth?code="), location.constData());

        const TestWorkspace::Answer answer = exchange(ws, callbackItem(location, u"code"_s), verifier);
        QCOMPARE(answer.status, 200);
        const QString token = answer.json().value("cookie"_L1).toObject().value("value"_L1).toString();
        QCOMPARE(ws.session(token).value("id"_L1).toString(), id);
    }

    void autoSignInOfStrangerDoesNotStart()
    {
        TestWorkspace ws({ u"--auto-sign-in"_s, u"nobody@halvard.example"_s });
        QVERIFY(!ws.isRunning());
        QVERIFY2(ws.error().contains("nobody@halvard.example"_L1), qPrintable(ws.error()));
    }

    // Tokens are long random URL-safe text, and the server keeps them nowhere
    // in the clear: not in its data folder, not in its output.
    void tokensAreRandomAndNeverKept()
    {
        TestWorkspace ws;
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        QStringList tokens;
        for (int i = 0; i < 4; ++i)
            tokens.append(ws.signIn(u"maren@halvard.example"_s));
        tokens.removeDuplicates();
        QCOMPARE(tokens.size(), 4);

        static const QRegularExpression urlSafe(u"^[A-Za-z0-9_-]+$"_s);
        for (const QString &token : tokens) {
            QVERIFY2(urlSafe.match(token).hasMatch(), "token is not URL-safe");
            QVERIFY(QByteArray::fromBase64(token.toLatin1(), QByteArray::Base64UrlEncoding).size() >= 16);
        }

        QVERIFY(ws.restart());
        const QByteArray output = ws.output();
        QDirIterator files(ws.dataPath(), QDir::Files, QDirIterator::Subdirectories);
        QList<QByteArray> stored;
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            stored.append(file.readAll());
        }
        QVERIFY(!stored.isEmpty());
        for (const QString &token : tokens) {
            QVERIFY(!output.contains(token.toLatin1()));
            for (const QByteArray &bytes : stored)
                QVERIFY2(!bytes.contains(token.toLatin1()), "a token was stored in the clear");
        }
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceSignIn)
#include "tst_workspace_signin.moc"
