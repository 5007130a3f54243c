#include "TarnWaitFor.h"
#include "app/NativeRootState.h"
#include "auth/NativeAuth.h"
#include "auth/NativeBrowser.h"
#include "auth/NativeSessionStore.h"
#include "auth/NativeSingleInstance.h"
#include "service/TarnAPI.h"
#include "shell/TarnNavigation.h"
#include "support/TestWorkspace.h"

#include <QJsonDocument>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Phase = NativeRootState::Phase;

// Sign-in from end to end: the root state starts it, the "browser" (a script
// that loads the real sign-in page) hands the pilo-tarn: address to a second
// start of the real app, and that start passes it over the single-instance
// socket to this process, which plays the running app.
class TestSignIn : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void signInThroughSecondStart();
    void restoreMessages_data();
    void restoreMessages();
    void cancelAndPastedAddresses();
    void exchangeAnswers_data();
    void exchangeAnswers();

private:
    struct App {
        App(const Config &config, NativeSessionStore &store)
            : api(config, store, nullptr)
            , auth(config, store, &NativeBrowser::open)
            , root(api, auth, navigation)
        {
        }
        TarnAPI api;
        NativeAuth auth;
        QTemporaryDir folder;
        QSettings preferences { folder.filePath(u"prefs.ini"_s), QSettings::IniFormat };
        TarnNavigation navigation { &preferences };
        NativeRootState root;
    };
    static bool reach(App &running, Phase phase)
    {
        return QTest::qWaitFor([&] { return running.root.phase() == phase; }, 20000);
    }
    void startAs(const QString &who);

    std::unique_ptr<TestWorkspace> workspace;
    std::optional<Config> config;
    NativeSessionStore store;
    NativeSingleInstance instance { u"pilo-tarn"_s };
    std::unique_ptr<App> app;
};

void TestSignIn::initTestCase()
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // for the second start of the app
    QVERIFY(instance.claim());
    qputenv("BROWSER", TARN_SOURCE_DIR "/scripts/demo-browser");
    qputenv("PILO_TARN_APP", PILO_TARN_APP);
}

void TestSignIn::startAs(const QString &who)
{
    workspace = std::make_unique<TestWorkspace>(QStringList { u"--auto-sign-in"_s, who });
    QVERIFY2(workspace->isRunning(), qPrintable(workspace->error()));
    qputenv("TARN_WORKSPACE_CA", workspace->certificatePath().toUtf8());
    QString error;
    config = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), &error);
    QVERIFY(config);
    app = std::make_unique<App>(*config, store);
    connect(&instance, &NativeSingleInstance::activated, &app->root, &NativeRootState::openCallback);
}

void TestSignIn::init()
{
    tarnWaitFor(store.clear());
    app.reset();
    startAs(u"owner"_s);
}

void TestSignIn::signInThroughSecondStart()
{
    app->root.start();
    QVERIFY(reach(*app, Phase::SignedOut));
    QCOMPARE(app->root.message(), QString());

    app->root.signIn();
    QVERIFY(reach(*app, Phase::SignedIn));
    QCOMPARE(app->root.personName(), u"Maren Holt"_s);
    QCOMPARE(app->navigation.destination().screen, TarnScreen::agent);
    const std::optional<QString> token = tarnWaitFor(store.token());
    QVERIFY(token);
    QCOMPARE(workspace->session(*token).value("email"_L1).toString(), u"maren@halvard.example"_s);

    // The command-line companion uses the same stored session.
    QProcess tarn;
    tarn.start(QStringLiteral(TARN_CLI),
        { u"api"_s, u"--workspace"_s, workspace->url().toString(), u"--workspace-ca"_s, workspace->certificatePath(),
            u"GET"_s, u"/api/session"_s });
    QVERIFY(tarn.waitForFinished(20000));
    QCOMPARE(tarn.exitCode(), 0);
    QCOMPARE(
        QJsonDocument::fromJson(tarn.readAllStandardOutput()).object().value("name"_L1).toString(), u"Maren Holt"_s);

    // A new start restores the session without signing in.
    app = std::make_unique<App>(*config, store);
    app->root.start();
    QVERIFY(reach(*app, Phase::SignedIn));

    // Signing out ends the session at the service and here.
    QSignalSpy signedOut(&app->root, &NativeRootState::signedOut);
    app->root.signOut();
    QVERIFY(reach(*app, Phase::SignedOut));
    QCOMPARE(signedOut.size(), 1);
    QVERIFY(!app->navigation.hasAccess());
    QCOMPARE(tarnWaitFor(store.token()), std::nullopt);
    QVERIFY(workspace->session(*token).isEmpty());
}

void TestSignIn::restoreMessages_data()
{
    QTest::addColumn<QString>("who");
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<int>("phase");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("detail");

    const QJsonObject none;
    const QJsonObject ended { { u"method"_s, u"GET"_s }, { u"path"_s, u"/api/session"_s }, { u"status"_s, 401 },
        { u"content_type"_s, u"application/json"_s }, { u"body"_s, u"{}"_s } };
    const QJsonObject broken { { u"method"_s, u"GET"_s }, { u"path"_s, u"/api/session"_s }, { u"status"_s, 502 },
        { u"content_type"_s, u"text/plain"_s }, { u"body"_s, QString() } };
    QTest::addRow("no Home app") << u"ada@halvard.example"_s << none << int(Phase::SignedOut)
                                 << u"This account cannot open Tarn Home."_s << QString();
    QTest::addRow("session ended") << u"owner"_s << ended << int(Phase::SignedOut) << u"Sign in to continue."_s
                                   << QString();
    QTest::addRow("service failing") << u"owner"_s << broken << int(Phase::Unreachable)
                                     << u"Tarn is unreachable. Check your connection and retry."_s
                                     << u"Pilo Tarn returned HTTP 502."_s;
}

void TestSignIn::restoreMessages()
{
    QFETCH(QString, who);
    QFETCH(QJsonObject, fault);
    QFETCH(int, phase);
    QFETCH(QString, message);
    QFETCH(QString, detail);

    startAs(who);
    app->root.signIn();
    QVERIFY(QTest::qWaitFor([&] { return app->root.phase() != Phase::SigningIn && !app->root.busy(); }, 20000));

    app = std::make_unique<App>(*config, store);
    connect(&instance, &NativeSingleInstance::activated, &app->root, &NativeRootState::openCallback);
    if (!fault.isEmpty())
        workspace->setFault(fault);
    app->root.start();
    QVERIFY(reach(*app, Phase(phase)));
    QCOMPARE(app->root.message(), message);
    QCOMPARE(app->root.detail(), detail);

    if (Phase(phase) == Phase::Unreachable) { // the fault was used once: retry now succeeds
        app->root.start();
        QVERIFY(reach(*app, Phase::SignedIn));
    }
}

void TestSignIn::cancelAndPastedAddresses()
{
    qputenv("BROWSER", "true"); // a browser that opens and never comes back
    app->root.signIn();
    QVERIFY(reach(*app, Phase::SigningIn));
    QVERIFY(app->root.signInAddress().contains("/api/mobile/start?challenge="_L1));

    QVERIFY(!app->root.submitCallbackAddress(u"https://example.com/"_s));
    QCOMPARE(app->root.phase(), Phase::SigningIn);
    app->root.cancelSignIn();
    QVERIFY(reach(*app, Phase::SignedOut));
    QCOMPARE(app->root.message(), u"Google sign-in did not finish. Try again."_s);

    // A pasted address is handled exactly like one handed over by the desktop.
    app->root.signIn();
    QVERIFY(reach(*app, Phase::SigningIn));
    QVERIFY(app->root.submitCallbackAddress(u"pilo-tarn://auth?error=Access%20denied."_s));
    QVERIFY(reach(*app, Phase::SignedOut));
    QCOMPARE(app->root.message(), u"Access denied."_s);
    QVERIFY(!app->root.submitCallbackAddress(u"pilo-tarn://auth?code=late"_s)); // nothing waits any more

    app->root.signIn();
    QVERIFY(reach(*app, Phase::SigningIn));
    QVERIFY(app->root.submitCallbackAddress(u"pilo-tarn://auth?code="_s));
    QVERIFY(reach(*app, Phase::SignedOut));
    QCOMPARE(app->root.message(), u"Sign-in expired. Start again."_s);
    QCOMPARE(tarnWaitFor(store.token()), std::nullopt); // nothing stored unless the exchange succeeded
    qputenv("BROWSER", TARN_SOURCE_DIR "/scripts/demo-browser");
}

void TestSignIn::exchangeAnswers_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("message");

    const QString granted = uR"({"cookie":{"value":"tok-123"},"user":{"name":"Maren Holt"}})"_s;
    QTest::addRow("201 is not success") << 201 << granted << u"Sign-in expired. Start again."_s;
    QTest::addRow("refused with message")
        << 400 << uR"({"error":"This code was already used."})"_s << u"This code was already used."_s;
    QTest::addRow("refused without message") << 500 << QString() << u"Sign-in expired. Start again."_s;
    QTest::addRow("200 unreadable") << 200 << uR"({"cookie":{}})"_s
                                    << u"Pilo Tarn returned an unreadable response. Try again."_s;
    QTest::addRow("200 empty token") << 200 << uR"({"cookie":{"value":""},"user":{"name":"M"}})"_s
                                     << u"Pilo Tarn returned an unreadable response. Try again."_s;
}

void TestSignIn::exchangeAnswers()
{
    QFETCH(int, status);
    QFETCH(QString, body);
    QFETCH(QString, message);

    workspace->setFault({ { u"method"_s, u"POST"_s }, { u"path"_s, u"/api/mobile/exchange"_s }, { u"status"_s, status },
        { u"content_type"_s, u"application/json"_s }, { u"body"_s, body } });
    app->root.signIn();
    QVERIFY(QTest::qWaitFor([&] { return app->root.phase() == Phase::SignedOut && !app->root.busy(); }, 20000));
    QCOMPARE(app->root.message(), message);
    QCOMPARE(tarnWaitFor(store.token()), std::nullopt);
}

QTEST_GUILESS_MAIN(TestSignIn)
#include "tst_signin.moc"
