// `tarn`, run as the built executable against a real workspace and a real
// keyring: sign-in by both of its routes, sign-out, and what every command
// says and exits with when it cannot do what it was asked.
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

struct ErrorRow {
    const char *name;
    QStringList args; // {dir} is a folder of test files; {workspace} adds --workspace and --workspace-ca
    QByteArray input;
    QJsonObject fault;
    int exitCode;
    QString err; // the first line of standard error, {dir} as above
};

QJsonObject fault(const char *path, int status, const QString &body)
{
    return { { u"method"_s, u"GET"_s }, { u"path"_s, QString::fromLatin1(path) }, { u"status"_s, status },
        { u"content_type"_s, u"application/json"_s }, { u"body"_s, body } };
}

} // namespace

class TestTarn : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void signInThroughTheAppsHandOff();
    void signInPastedWhileTheAppRuns();
    void helpDescribesEveryCommand();
    void errors_data();
    void errors();

private:
    [[nodiscard]] QStringList workspaceArgs() const;
    Run tarn(const QStringList &args, const QByteArray &input = {});

    std::unique_ptr<TestWorkspace> m_workspace;
    NativeSessionStore m_store;
    QTemporaryDir m_dir;
};

void TestTarn::initTestCase()
{
    m_workspace = std::make_unique<TestWorkspace>(QStringList { u"--auto-sign-in"_s, u"owner"_s });
    QVERIFY2(m_workspace->isRunning(), qPrintable(m_workspace->error()));
    qputenv("TARN_WORKSPACE_CA", m_workspace->certificatePath().toUtf8());
    qputenv("PILO_TARN_APP", PILO_TARN_APP);
    QFile nul(m_dir.filePath(u"nul.html"_s));
    QVERIFY(nul.open(QIODevice::WriteOnly));
    nul.write(QByteArray("<p>a\0b</p>", 10));
}

void TestTarn::init()
{
    tarnWaitFor(m_store.clear());
    m_workspace->clearFaults();
    qputenv("BROWSER", TARN_SOURCE_DIR "/scripts/demo-browser");
}

QStringList TestTarn::workspaceArgs() const
{
    return { u"--workspace"_s, m_workspace->url().toString(), u"--workspace-ca"_s, m_workspace->certificatePath() };
}

Run TestTarn::tarn(const QStringList &args, const QByteArray &input)
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

void TestTarn::signInThroughTheAppsHandOff()
{
    // tarn holds the app's hand-off while it waits; the browser gives the
    // address to a later start of the real app, which passes it on.
    const Run in = tarn(QStringList { u"sign-in"_s } + workspaceArgs());
    QCOMPARE(in.err, QString());
    QCOMPARE(in.exitCode, 0);
    QVERIFY(in.out.contains("/api/mobile/start?challenge="_L1));
    QVERIFY(in.out.endsWith("Signed in as Maren Holt.\n"_L1));

    // The app's store holds the session, which the other commands use.
    const std::optional<QString> token = tarnWaitFor(m_store.token());
    QVERIFY(token);
    QCOMPARE(m_workspace->session(*token).value("email"_L1).toString(), u"maren@halvard.example"_s);
    const Run api = tarn(QStringList { u"api"_s } + workspaceArgs() + QStringList { u"GET"_s, u"/api/session"_s });
    QCOMPARE(api.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(api.out.toUtf8()).object().value("name"_L1).toString(), u"Maren Holt"_s);

    const QStringList signOut = QStringList { u"sign-out"_s } + workspaceArgs();
    QCOMPARE(tarn(signOut).out, u"Signed out: the session was ended and removed from this computer.\n"_s);
    QVERIFY(m_workspace->session(*token).isEmpty());
    QCOMPARE(tarn(signOut).out, u"No session was stored on this computer; nothing to remove.\n"_s);

    // A token the workspace no longer knows is removed all the same.
    tarnWaitFor(m_store.save(u"forgotten-token"_s));
    QCOMPARE(tarn(signOut).out, u"The stored session had already ended; it was removed from this computer.\n"_s);
    QCOMPARE(tarnWaitFor(m_store.token()), std::nullopt);
}

void TestTarn::signInPastedWhileTheAppRuns()
{
    NativeSingleInstance app(u"pilo-tarn"_s); // the running app holds the hand-off
    QVERIFY(app.claim());
    qputenv("BROWSER", "true"); // a browser that opens and never comes back

    QProcess process;
    process.start(QStringLiteral(TARN_CLI), QStringList { u"sign-in"_s } + workspaceArgs());
    QString said;
    const QRegularExpression challenge(u"challenge=([A-Za-z0-9_-]+)"_s);
    QVERIFY(QTest::qWaitFor(
        [&] {
            said += QString::fromUtf8(process.readAllStandardOutput());
            return challenge.match(said).hasMatch() && said.contains("quit Pilo Tarn"_L1);
        },
        20000));
    QVERIFY(said.contains("Pilo Tarn is running, so it, not tarn, receives the address"_L1));

    const QString code = m_workspace->signInCode(u"maren@halvard.example"_s, challenge.match(said).captured(1));
    QVERIFY(!code.isEmpty());
    process.write("https://example.com/\n");
    process.write("pilo-tarn://auth?code=" + code.toUtf8() + '\n');
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.readAllStandardError(), "tarn sign-in: paste the whole address that starts with pilo-tarn://\n");
    QCOMPARE(process.exitCode(), 0);
    said += QString::fromUtf8(process.readAllStandardOutput());
    QVERIFY(said.endsWith("Signed in as Maren Holt.\n"_L1));
    QVERIFY(tarnWaitFor(m_store.token()));

    // Nothing pasted and nothing handed over: the sign-in ends as the app's would.
    const Run ended = tarn(QStringList { u"sign-in"_s } + workspaceArgs());
    QCOMPARE(ended.exitCode, 1);
    QCOMPARE(ended.err, u"tarn sign-in: Google sign-in did not finish. Try again.\n"_s);
}

void TestTarn::helpDescribesEveryCommand()
{
    const Run overview = tarn({ u"--help"_s });
    QCOMPARE(overview.exitCode, 0);
    for (const QString &command : { u"sign-in"_s, u"sign-out"_s, u"api"_s, u"mail-blocks"_s, u"bank-csv"_s }) {
        QVERIFY2(overview.out.contains(u"\n  tarn "_s + command + u' '), qPrintable(command));
        const Run help = tarn({ u"help"_s, command });
        QCOMPARE(help.exitCode, 0);
        QVERIFY2(help.out.startsWith(u"usage: tarn "_s + command + u' '), qPrintable(help.out));
        QVERIFY(help.out.contains("Options:\n"_L1));
        QCOMPARE(tarn({ command, u"--help"_s }).out, help.out);
    }
}

void TestTarn::errors_data()
{
    QTest::addColumn<ErrorRow>("row");
    const QString body = uR"({"error":"%1"})"_s;
    const ErrorRow rows[] = {
        { "no command", {}, {}, {}, 2, u"tarn: name a command"_s },
        { "unknown command", { u"frobnicate"_s }, {}, {}, 2, u"tarn: no command frobnicate"_s },
        { "help on an unknown command", { u"help"_s, u"frobnicate"_s }, {}, {}, 2,
            u"tarn help: no command frobnicate"_s },
        { "unknown option", { u"api"_s, u"--verbose"_s, u"GET"_s, u"/api/session"_s }, {}, {}, 2,
            u"tarn api: unknown option 'verbose'."_s },
        { "unknown method", { u"api"_s, u"FETCH"_s, u"/api/session"_s }, {}, {}, 2,
            u"tarn api: unknown method FETCH; use GET, POST, PATCH or DELETE"_s },
        { "body not an object", { u"api"_s, u"POST"_s, u"/api/logout"_s, u"[1]"_s }, {}, {}, 2,
            u"tarn api: the body must be a JSON object"_s },
        { "certificate not PEM", { u"api"_s, u"--workspace-ca"_s, u"{dir}/nul.html"_s, u"GET"_s, u"/"_s }, {}, {}, 2,
            u"tarn api: the workspace certificate file must hold one PEM certificate: {dir}/nul.html"_s },
        { "arguments to sign-in", { u"sign-in"_s, u"owner"_s }, {}, {}, 2, u"tarn sign-in: takes no arguments"_s },
        { "no token on standard input", { u"api"_s, u"{workspace}"_s, u"--token-stdin"_s, u"GET"_s, u"/"_s }, {}, {}, 1,
            u"tarn api: no token on standard input"_s },
        { "not signed in", { u"api"_s, u"{workspace}"_s, u"GET"_s, u"/api/session"_s }, {}, {}, 1,
            u"tarn api: sign in to Pilo Tarn again."_s },
        { "service sentence continues in lower case",
            { u"api"_s, u"{workspace}"_s, u"--token-stdin"_s, u"GET"_s, u"/api/session"_s }, "token\n",
            fault("/api/session", 503, body.arg("The workspace did not answer within 60 s."_L1)), 1,
            u"tarn api: the workspace did not answer within 60 s."_s },
        { "a name keeps its capital", { u"api"_s, u"{workspace}"_s, u"--token-stdin"_s, u"GET"_s, u"/api/session"_s },
            "token\n", fault("/api/session", 502, {}), 1, u"tarn api: Pilo Tarn returned HTTP 502."_s },
        { "an acronym keeps its capitals",
            { u"api"_s, u"{workspace}"_s, u"--token-stdin"_s, u"GET"_s, u"/api/session"_s }, "token\n",
            fault("/api/session", 400, body.arg("CSV rows must have a date."_L1)), 1,
            u"tarn api: CSV rows must have a date."_s },
        { "mail body with NUL bytes", { u"mail-blocks"_s, u"{dir}/nul.html"_s }, {}, {}, 1,
            u"tarn mail-blocks: {dir}/nul.html: not text (it holds NUL bytes); give a mail body in HTML or plain text"_s },
        { "NUL bytes on standard input", { u"mail-blocks"_s, u"-"_s }, QByteArray("a\0", 2), {}, 1,
            u"tarn mail-blocks: standard input: not text (it holds NUL bytes); give a mail body in HTML or plain text"_s },
        { "missing mail body", { u"mail-blocks"_s, u"--plain"_s, u"{dir}/none.txt"_s }, {}, {}, 1,
            u"tarn mail-blocks: {dir}/none.txt: cannot read it: No such file or directory"_s },
        { "two mail bodies", { u"mail-blocks"_s, u"a"_s, u"b"_s }, {}, {}, 2,
            u"tarn mail-blocks: give one mail body file"_s },
        { "missing statement", { u"bank-csv"_s, u"{dir}/none.csv"_s }, {}, {}, 1,
            u"tarn bank-csv: {dir}/none.csv: cannot open it: No such file or directory"_s },
    };
    for (const ErrorRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarn::errors()
{
    QFETCH(ErrorRow, row);
    if (!row.fault.isEmpty())
        m_workspace->setFault(row.fault);
    QStringList args;
    for (const QString &arg : row.args) {
        if (arg == "{workspace}"_L1)
            args += workspaceArgs();
        else
            args += QString(arg).replace("{dir}"_L1, m_dir.path());
    }
    const Run run = tarn(args, row.input);
    QCOMPARE(run.err.section(u'\n', 0, 0), QString(row.err).replace("{dir}"_L1, m_dir.path()));
    QCOMPARE(run.out, QString());
    QCOMPARE(run.exitCode, row.exitCode);
}

QTEST_GUILESS_MAIN(TestTarn)
#include "tst_tarn.moc"
