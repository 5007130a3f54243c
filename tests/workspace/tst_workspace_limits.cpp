#include "WorkspaceRawClient.h"
#include "support/TestWorkspace.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// The service's limits as workspace/README.md gives them.
constexpr qsizetype headBytes = 16 * 1024;
constexpr qint64 jsonBodyBytes = 64 * 1024;
constexpr qint64 mailBodyBytes = 26 * 1024 * 1024;
constexpr int loggedRequests = 200;
constexpr qsizetype loggedBodyBytes = 4 * 1024;
// The short timeouts the tests start the service with.
constexpr int shortTimeoutMs = 300;

QByteArray request(
    QByteArrayView method, QByteArrayView path, QByteArrayView headers = {}, QByteArrayView version = "HTTP/1.1")
{
    return method.toByteArray() + ' ' + path.toByteArray() + ' ' + version.toByteArray() + "\r\nHost: 127.0.0.1\r\n"
        + headers.toByteArray() + "\r\n";
}

// A GET whose head (up to and with its blank line) is `size` bytes in
// `count` header lines.
QByteArray headOf(qsizetype size, int count)
{
    QByteArray head = "GET /api/test/requests HTTP/1.1\r\nHost: 127.0.0.1\r\n";
    for (int i = 2; i < count; ++i)
        head += "X-" + QByteArray::number(i) + ": 1\r\n";
    head += "X-Pad: ";
    return head + QByteArray(size - head.size() - 4, 'a') + "\r\n\r\n";
}

template <typename Row, std::size_t count> void addRows(const Row (&rows)[count])
{
    QTest::addColumn<Row>("row");
    for (const Row &row : rows)
        QTest::addRow("%s", row.name) << row;
}

QStringList shortTimeouts()
{
    const QString ms = QString::number(shortTimeoutMs);
    return { u"--idle-timeout-ms"_s, ms, u"--request-timeout-ms"_s, ms };
}

struct BodyRow {
    const char *name;
    QByteArray path;
    qint64 length;
    int status;
};

struct SentRow {
    const char *name;
    QByteArray sent;
    int status; // 0: closed without an answer
};

struct CloseRow {
    const char *name;
    QByteArray method;
    QByteArray version;
    QByteArray headers;
    bool closes;
};

} // namespace

Q_DECLARE_METATYPE(BodyRow)
Q_DECLARE_METATYPE(SentRow)
Q_DECLARE_METATYPE(CloseRow)

// The limits that keep the service up under clients that send too much, too
// slowly, or too many connections, each tried at its line and just past it.
class TestWorkspaceLimits : public QObject {
    Q_OBJECT

    std::unique_ptr<TestWorkspace> m_ws;

    std::unique_ptr<WorkspaceRawClient> connected(TestWorkspace &ws)
    {
        auto client = std::make_unique<WorkspaceRawClient>(ws.url(), ws.certificatePath());
        return client->connect() ? std::move(client) : nullptr;
    }

private slots:
    void initTestCase()
    {
        m_ws = std::make_unique<TestWorkspace>(shortTimeouts());
        QVERIFY2(m_ws->isRunning(), qPrintable(m_ws->error()));
    }

    // Past its route's limit a body is refused from its Content-Length
    // alone: the refusal comes before a byte of it is sent.
    void bodies_data()
    {
        const BodyRow rows[] = {
            { "JSON route at its limit", "/api/mobile/exchange", jsonBodyBytes, 400 },
            { "JSON route a byte over", "/api/mobile/exchange", jsonBodyBytes + 1, 413 },
            { "unknown route a byte over", "/api/nowhere", jsonBodyBytes + 1, 413 },
            { "mail-sized route at its limit", "/api/test/upload", mailBodyBytes, 200 },
            { "mail-sized route a byte over", "/api/test/upload", mailBodyBytes + 1, 413 },
        };
        addRows(rows);
    }
    void bodies()
    {
        QFETCH(BodyRow, row);
        const std::unique_ptr<WorkspaceRawClient> client = connected(*m_ws);
        QVERIFY(client);
        const QByteArray length = "Content-Length: " + QByteArray::number(row.length) + "\r\n";
        client->write(request("POST", row.path, length));
        if (row.status != 413)
            client->write(QByteArray(row.length, 'x'));
        const std::optional<WorkspaceRawClient::Answer> answer = client->read();
        QVERIFY(answer);
        QCOMPARE(answer->status, row.status);
        if (row.status == 413)
            QVERIFY(client->closes());
        else if (row.status == 200)
            QCOMPARE(answer->body, QByteArray(R"({"bytes":)" + QByteArray::number(row.length) + '}'));
    }

    // Heads at and past their limits; and the guard must find each request's
    // end where the HTTP library does, so what it cannot measure the same way
    // is refused.
    void heads_data()
    {
        const SentRow rows[] = {
            { "head at its size", headOf(headBytes, 3), 200 },
            { "head a byte over", headOf(headBytes + 1, 3), 431 },
            { "100 headers", headOf(4096, 100), 200 },
            { "101 headers", headOf(4096, 101), 431 },
            { "lines ending in LF alone", "GET /api/test/requests HTTP/1.1\nHost: 127.0.0.1\n\n", 200 },
            { "signed length", request("POST", "/api/mobile/exchange", "Content-Length: +2\r\n") + "{}", 400 },
            { "two lengths", request("POST", "/api/mobile/exchange", "Content-Length: 2\r\nContent-Length: 3\r\n"),
                400 },
            { "chunked body", request("POST", "/api/mobile/exchange", "Transfer-Encoding: chunked\r\n"), 411 },
            { "HTTP/2 request line", request("GET", "/api/test/requests", {}, "HTTP/2.0"), 400 },
        };
        addRows(rows);
    }
    void heads()
    {
        QFETCH(SentRow, row);
        const std::unique_ptr<WorkspaceRawClient> client = connected(*m_ws);
        QVERIFY(client);
        client->write(row.sent);
        const std::optional<WorkspaceRawClient::Answer> answer = client->read();
        QVERIFY(answer);
        QCOMPARE(answer->status, row.status);
        QCOMPARE(client->closes(row.status == 200 ? 0 : 5000), row.status != 200);
    }

    void timeouts_data()
    {
        const SentRow rows[] = {
            { "idle connection", {}, 0 },
            { "idle after an answer", request("GET", "/api/test/requests"), 0 },
            { "unfinished head", "GET /api/test/requests HTTP/1.1\r\nHost: 127.0.0.1\r\n", 408 },
            { "body short of its length", request("POST", "/api/mobile/exchange", "Content-Length: 10\r\n") + "{}",
                408 },
        };
        addRows(rows);
    }
    void timeouts()
    {
        QFETCH(SentRow, row);
        const std::unique_ptr<WorkspaceRawClient> client = connected(*m_ws);
        QVERIFY(client);
        QElapsedTimer waited;
        waited.start();
        client->write(row.sent);
        if (row.status == 0 && !row.sent.isEmpty()) {
            QVERIFY(client->read());
            waited.start();
        }
        if (row.status != 0) {
            const std::optional<WorkspaceRawClient::Answer> answer = client->read();
            QVERIFY(answer);
            QCOMPARE(answer->status, row.status);
        }
        QVERIFY(client->closes());
        // Timers start on the server a moment before the client's clock.
        QVERIFY2(waited.elapsed() >= shortTimeoutMs - 20, qPrintable(QString::number(waited.elapsed())));
    }

    void connectionEnds_data()
    {
        const CloseRow rows[] = {
            { "keep-alive", "GET", "HTTP/1.1", {}, false },
            { "Connection: close", "GET", "HTTP/1.1", "Connection: close\r\n", true },
            { "HTTP/1.0", "GET", "HTTP/1.0", {}, true },
            { "HEAD", "HEAD", "HTTP/1.1", {}, false },
        };
        addRows(rows);
    }
    void connectionEnds()
    {
        QFETCH(CloseRow, row);
        const std::unique_ptr<WorkspaceRawClient> client = connected(*m_ws);
        QVERIFY(client);
        for (int round = 0; round < (row.closes ? 1 : 2); ++round) {
            client->write(request(row.method, "/api/test/requests", row.headers, row.version));
            const std::optional<WorkspaceRawClient::Answer> answer = client->read(row.method);
            QVERIFY(answer);
            QCOMPARE(answer->status, 200);
            QCOMPARE(answer->hasHeader("Connection: close"), row.closes);
            QVERIFY(answer->hasHeader("Content-Type: application/json"));
            QCOMPARE(answer->body.isEmpty(), row.method == "HEAD");
        }
        QCOMPARE(client->closes(row.closes ? 5000 : 0), row.closes);
    }

    // At the cap a newcomer takes the place of the connection idle longest;
    // when every connection is busy, the newcomer is turned away.
    void connectionCap_data()
    {
        QTest::addColumn<bool>("busy");
        QTest::addRow("idle ones") << false;
        QTest::addRow("all busy") << true;
    }
    void connectionCap()
    {
        QFETCH(bool, busy);
        TestWorkspace ws({ u"--max-connections"_s, u"3"_s });
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        if (busy)
            ws.setFault(QJsonObject {
                { u"method"_s, u"GET"_s }, { u"path"_s, u"/api/held"_s }, { u"delay_ms"_s, 1000 }, { u"times"_s, 0 } });

        std::vector<std::unique_ptr<WorkspaceRawClient>> clients;
        for (int i = 0; i < 3; ++i) {
            clients.push_back(connected(ws));
            QVERIFY(clients.back());
            if (busy)
                clients.back()->write(request("GET", "/api/held"));
        }
        WorkspaceRawClient newcomer(ws.url(), ws.certificatePath());
        QCOMPARE(newcomer.connect(), !busy);
        if (busy) {
            for (const auto &client : clients)
                QCOMPARE(client->read()->status, 404);
            return;
        }
        QVERIFY(clients.front()->closes());
        QVERIFY(clients.at(1)->isOpen() && clients.at(2)->isOpen());
        newcomer.write(request("GET", "/api/test/requests"));
        QCOMPARE(newcomer.read()->status, 200);
    }

    // With its descriptors used up the service cannot accept; once clients
    // leave it accepts again by itself, and says so once.
    void acceptRecoversFromExhaustion()
    {
        QTemporaryDir data;
        QProcess server;
        server.start(u"prlimit"_s,
            { u"--nofile=48:48"_s, u"--"_s, QStringLiteral(TARN_WORKSPACE_BIN), u"--port"_s, u"0"_s, u"--data"_s,
                data.path(), u"--max-connections"_s, u"1000"_s, u"--stop-with-stdin"_s });
        QVERIFY(server.waitForStarted());
        QUrl url;
        QString certificate;
        QSignalSpy printed(&server, &QProcess::readyReadStandardOutput);
        while (certificate.isEmpty()) {
            if (!server.canReadLine())
                QVERIFY(printed.wait(10000));
            while (server.canReadLine()) {
                const QString line = QString::fromUtf8(server.readLine()).trimmed();
                if (line.startsWith("url: "_L1))
                    url = QUrl(line.mid(5));
                else if (line.startsWith("certificate: "_L1))
                    certificate = line.mid(13);
            }
        }

        std::vector<std::unique_ptr<WorkspaceRawClient>> crowd;
        QSignalSpy complained(&server, &QProcess::readyReadStandardError);
        for (int i = 0; i < 64; ++i) {
            crowd.push_back(std::make_unique<WorkspaceRawClient>(url, certificate));
            crowd.back()->start();
        }
        QVERIFY(complained.wait(10000));
        crowd.clear();

        WorkspaceRawClient late(url, certificate);
        QVERIFY(late.connect());
        late.write(request("GET", "/api/mobile/start/cancel"));
        QCOMPARE(late.read()->status, 302);
        const QByteArray said = server.readAllStandardError();
        QCOMPARE(said.count("cannot accept connections"), 1);
        server.closeWriteChannel();
        QVERIFY(server.waitForFinished());
    }

    void filesArePrivateUnderAnyUmask()
    {
        const mode_t before = ::umask(0);
        TestWorkspace ws;
        ::umask(before);
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        QVERIFY(!ws.signIn(u"maren@halvard.example"_s).isEmpty());

        const auto modeOf = [](const QString &path) {
            struct stat info { };
            return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 0777 : 0777;
        };
        QCOMPARE(modeOf(ws.dataPath()), 0700u);
        const QDir dir(ws.dataPath());
        const QStringList files = dir.entryList(QDir::Files | QDir::Hidden);
        QVERIFY2(files.contains(u"workspace.sqlite-wal"_s), qPrintable(files.join(' '_L1)));
        for (const QString &name : files)
            QVERIFY2(modeOf(dir.filePath(name)) == 0600u, qPrintable(name));
    }

    // Sign-in starts that are never finished leave nothing behind once
    // their codes have lapsed.
    void unfinishedStartsLapse()
    {
        TestWorkspace ws({ u"--code-ttl"_s, u"0"_s, u"--auto-sign-in"_s, u"owner"_s });
        QVERIFY2(ws.isRunning(), qPrintable(ws.error()));
        const QString challenge = TestWorkspace::challengeOf(TestWorkspace::makeVerifier());
        for (int i = 0; i < 20; ++i)
            QCOMPARE(ws.send("GET", u"api/mobile/start?challenge="_s + challenge).status, 302);

        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"lapse"_s);
        db.setDatabaseName(QDir(ws.dataPath()).filePath(u"workspace.sqlite"_s));
        QVERIFY(db.open());
        QSqlQuery count(u"SELECT count(*) FROM sign_in_codes"_s, db);
        QVERIFY(count.next());
        QCOMPARE(count.value(0).toInt(), 1);
    }

    void requestLogIsBounded()
    {
        m_ws->clearRequests();
        for (int i = 0; i < loggedRequests; ++i)
            (void)m_ws->send("GET", u"api/nowhere/%1"_s.arg(i));
        (void)m_ws->send("POST", u"api/nowhere/last"_s, QByteArray(10'000, 'x'));
        const QJsonArray log = m_ws->requests();
        QCOMPARE(log.size(), loggedRequests);
        QCOMPARE(log.first().toObject().value("path"_L1).toString(), u"/api/nowhere/1"_s);
        QCOMPARE(log.last().toObject().value("body"_L1).toString().size(), loggedBodyBytes);
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceLimits)
#include "tst_workspace_limits.moc"
