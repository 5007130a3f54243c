// `tarn`, run as the built executable against a real workspace and keyring:
// sign-in by both routes, sign-out, and what each command says and exits
// with when it cannot do what it was asked.
#include "TarnWaitFor.h"
#include "auth/NativeSessionStore.h"
#include "auth/NativeSingleInstance.h"
#include "support/TestWorkspace.h"

#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

Run tarn(const QStringList &args, const QByteArray &input = {})
{
    QProcess process;
    process.start(QStringLiteral(TARN_CLI), args);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(30000))
        return {};
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}

struct ErrorRow {
    const char *name;
    QStringList args; // {dir} is a folder of test files
    QByteArray input;
    int faultStatus; // of GET /api/session, answered with `faultError`; 0 for none
    const char *faultError;
    int exitCode;
    QString err; // the first line of standard error
};

} // namespace

class TestTarn : public QObject {
    Q_OBJECT

    std::unique_ptr<TestWorkspace> m_workspace;
    NativeSessionStore m_store;
    QTemporaryDir m_dir;

private slots:
    void initTestCase()
    {
        m_workspace = std::make_unique<TestWorkspace>(QStringList { u"--auto-sign-in"_s, u"owner"_s });
        QVERIFY2(m_workspace->isRunning(), qPrintable(m_workspace->error()));
        qputenv("TARN_WORKSPACE_URL", m_workspace->url().toString().toUtf8());
        qputenv("TARN_WORKSPACE_CA", m_workspace->certificatePath().toUtf8());
        qputenv("PILO_TARN_APP", PILO_TARN_APP);
        QFile nul(m_dir.filePath(u"nul.html"_s));
        QVERIFY(nul.open(QIODevice::WriteOnly) && nul.write("<p>a\0b</p>", 10) == 10);
    }

    void init()
    {
        tarnWaitFor(m_store.clear());
        m_workspace->clearFaults();
        qputenv("BROWSER", TARN_SOURCE_DIR "/scripts/demo-browser");
    }

    void signInThroughTheAppsHandOff()
    {
        // tarn holds the hand-off; the browser gives the address to a later start of the real app.
        const Run in = tarn({ u"sign-in"_s });
        QCOMPARE(in.err, QString());
        QVERIFY(in.out.endsWith("Signed in as Maren Holt.\n"_L1));
        const std::optional<QString> token = tarnWaitFor(m_store.token());
        QVERIFY(token);
        const Run api = tarn({ u"api"_s, u"GET"_s, u"/api/session"_s });
        QCOMPARE(QJsonDocument::fromJson(api.out.toUtf8()).object().value("name"_L1).toString(), u"Maren Holt"_s);

        QCOMPARE(tarn({ u"sign-out"_s }).out, u"Signed out: the session was ended and removed from this computer.\n"_s);
        QVERIFY(m_workspace->session(*token).isEmpty());
        QCOMPARE(tarn({ u"sign-out"_s }).out, u"No session was stored on this computer; nothing to remove.\n"_s);
    }

    void signInPastedWhileTheAppRuns()
    {
        NativeSingleInstance app(u"pilo-tarn"_s);
        QVERIFY(app.claim());
        qputenv("BROWSER", "true"); // opens, and never comes back

        QProcess process;
        process.start(QStringLiteral(TARN_CLI), { u"sign-in"_s });
        QString said;
        QVERIFY(QTest::qWaitFor(
            [&] { return (said += QString::fromUtf8(process.readAllStandardOutput())).contains("sign-in again"_L1); },
            20000));
        QVERIFY(said.contains("Pilo Tarn is running, so it, not tarn, receives the address"_L1));
        const QString challenge = QRegularExpression(u"challenge=([\\w-]+)"_s).match(said).captured(1);
        const QString code = m_workspace->signInCode(u"maren@halvard.example"_s, challenge);
        process.write("pilo-tarn://auth?code=" + code.toUtf8() + '\n');
        QVERIFY(process.waitForFinished(20000));
        QVERIFY(process.readAllStandardOutput().endsWith("Signed in as Maren Holt.\n"));
        QVERIFY(tarnWaitFor(m_store.token()));

        // Nothing pasted and nothing handed over: it ends as the app's sign-in would.
        QCOMPARE(tarn({ u"sign-in"_s }).err, u"tarn sign-in: Google sign-in did not finish. Try again.\n"_s);
    }

    void errors_data()
    {
        QTest::addColumn<ErrorRow>("row");
        const QStringList session { u"api"_s, u"--token-stdin"_s, u"GET"_s, u"/api/session"_s };
        const ErrorRow rows[] = {
            { "no command", {}, {}, 0, {}, 2, u"tarn: name a command"_s },
            { "unknown option", { u"api"_s, u"--verbose"_s }, {}, 0, {}, 2, u"tarn api: unknown option 'verbose'."_s },
            { "certificate not PEM", { u"sign-out"_s, u"--workspace-ca"_s, u"{dir}/nul.html"_s }, {}, 0, {}, 2,
                u"tarn sign-out: the workspace certificate file must hold one PEM certificate: {dir}/nul.html"_s },
            { "not signed in", { u"api"_s, u"GET"_s, u"/"_s }, {}, 0, {}, 1,
                u"tarn api: sign in to Pilo Tarn again."_s },
            { "service sentence continues in lower case", session, "t\n", 503,
                "The workspace did not answer within 60 s.", 1,
                u"tarn api: the workspace did not answer within 60 s."_s },
            { "an acronym keeps its capitals", session, "t\n", 400, "CSV rows need a date.", 1,
                u"tarn api: CSV rows need a date."_s },
            { "mail body with NUL bytes", { u"mail-blocks"_s, u"{dir}/nul.html"_s }, {}, 0, {}, 1,
                u"tarn mail-blocks: {dir}/nul.html: not text (it holds NUL bytes); give a mail body in HTML or plain text"_s },
        };
        for (const ErrorRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }

    void errors()
    {
        QFETCH(ErrorRow, row);
        if (row.faultStatus) {
            m_workspace->setFault({ { u"method"_s, u"GET"_s }, { u"path"_s, u"/api/session"_s },
                { u"status"_s, row.faultStatus }, { u"content_type"_s, u"application/json"_s },
                { u"body"_s, uR"({"error":"%1"})"_s.arg(QLatin1StringView(row.faultError)) } });
        }
        QStringList args;
        for (const QString &arg : row.args)
            args += QString(arg).replace("{dir}"_L1, m_dir.path());
        const Run run = tarn(args, row.input);
        QCOMPARE(run.err.section(u'\n', 0, 0), QString(row.err).replace("{dir}"_L1, m_dir.path()));
        QCOMPARE(run.out, QString());
        QCOMPARE(run.exitCode, row.exitCode);
    }
};

QTEST_GUILESS_MAIN(TestTarn)
#include "tst_tarn.moc"
