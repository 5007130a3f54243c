#include "support/TestWorkspace.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSslSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QTestEventLoop>

#include <memory>
#include <vector>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// The limits as workspace/README.md gives them, and the tests' short timeouts.
// A request may take longer than an idle pause: the largest body (26 MiB over
// TLS) must arrive in time on a busy machine.
constexpr qsizetype headBytes = 16 * 1024;
constexpr qint64 jsonBodyBytes = 64 * 1024;
constexpr qint64 mailBodyBytes = 26 * 1024 * 1024;
constexpr int idleMs = 300;
constexpr int requestMs = 3000;

// One TLS connection that writes bytes exactly as given.
struct Raw {
    QSslSocket socket;
    QByteArray got;

    Raw(const QUrl &url, const QString &certificate)
    {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates(QSslCertificate::fromPath(certificate));
        socket.setSslConfiguration(tls);
        QObject::connect(&socket, &QIODevice::readyRead, &socket, [this] { got += socket.readAll(); });
        socket.connectToHostEncrypted(url.host(), quint16(url.port()));
    }
    // Waits for the signal or the connection's end; whether still connected.
    template <typename Signal> bool wait(Signal signal, int ms = 5000)
    {
        QTestEventLoop loop;
        QObject::connect(&socket, signal, &loop, &QTestEventLoop::exitLoop);
        QObject::connect(&socket, &QAbstractSocket::disconnected, &loop, &QTestEventLoop::exitLoop);
        if (socket.state() != QAbstractSocket::UnconnectedState)
            loop.enterLoopMSecs(ms);
        return socket.state() == QAbstractSocket::ConnectedState;
    }
    // The next answer's head and body ("HEAD" answers have no body); empty when none came.
    std::pair<QByteArray, QByteArray> answer(bool toHead = false)
    {
        for (bool open = true;; open = open && wait(&QIODevice::readyRead)) {
            const qsizetype end = got.indexOf("\r\n\r\n") + 4;
            const qsizetype at = got.left(end).toLower().indexOf("content-length: ") + 16;
            const qsizetype length = toHead || at < 16 ? 0 : got.mid(at, got.indexOf('\r', at) - at).toLongLong();
            if (end >= 4 && got.size() >= end + length) {
                std::pair<QByteArray, QByteArray> answer { got.left(end), got.mid(end, length) };
                got.remove(0, end + length);
                return answer;
            }
            if (!open)
                return {};
        }
    }
};

// A workspace of its own, under the given descriptor limit.
struct Server {
    QTemporaryDir data;
    QProcess process;
    QUrl url;

    explicit Server(const QStringList &options, const QString &files = u"1024:4096"_s)
    {
        process.start(u"prlimit"_s,
            QStringList { u"--nofile="_s + files, u"--"_s, QStringLiteral(TARN_WORKSPACE_BIN), u"--data"_s, data.path(),
                u"--test-faults"_s, u"--stop-with-stdin"_s }
                + options);
        QSignalSpy printed(&process, &QProcess::readyReadStandardOutput);
        QByteArray lines;
        while (lines.count('\n') < 2 && printed.wait(10000))
            lines += process.readAllStandardOutput();
        url = QUrl(QString::fromUtf8(lines.split('\n').first().mid(5)));
    }
    ~Server()
    {
        process.closeWriteChannel();
        process.waitForFinished();
    }
};

std::unique_ptr<Raw> connected(const Server &server)
{
    auto raw = std::make_unique<Raw>(server.url, server.data.filePath(u"certificate.pem"_s));
    return raw->wait(&QSslSocket::encrypted) && raw->socket.isEncrypted() ? std::move(raw) : nullptr;
}

QByteArray request(QByteArrayView method, QByteArrayView path, QByteArrayView headers = {})
{
    return method.toByteArray() + ' ' + path.toByteArray() + " HTTP/1.1\r\nHost: 127.0.0.1\r\n" + headers.toByteArray()
        + "\r\n";
}

// A GET whose head, blank line included, is `size` bytes in `count` header lines.
QByteArray headOf(qsizetype size, int count)
{
    QByteArray head = "GET /api/test/requests HTTP/1.1\r\nHost: 127.0.0.1\r\n";
    for (int i = 2; i < count; ++i)
        head += "X-" + QByteArray::number(i) + ": 1\r\n";
    head += "X-Pad: ";
    return head + QByteArray(size - head.size() - 4, 'a') + "\r\n\r\n";
}

QByteArray withBody(QByteArrayView method, QByteArrayView path, qint64 length, qint64 sent)
{
    return request(method, path, QByteArray("Content-Length: " + QByteArray::number(length) + "\r\n"))
        + QByteArray(sent, 'x');
}

} // namespace

// The limits that keep the service up under clients that send too much, too
// slowly, or open too many connections, each tried at its line and past it.
class TestWorkspaceLimits : public QObject {
    Q_OBJECT

    std::unique_ptr<Server> m_server;

private slots:
    void initTestCase()
    {
        m_server = std::make_unique<Server>(QStringList {
            u"--idle-timeout-ms"_s, QString::number(idleMs), u"--request-timeout-ms"_s, QString::number(requestMs) });
        // Answers to /api/held come late, held as a long poll holds them.
        const QByteArray fault
            = R"({"method":"GET","path":"/api/held","status":200,"body":"{}","delay_ms":600,"times":0})";
        const std::unique_ptr<Raw> raw = connected(*m_server);
        QVERIFY(raw);
        raw->socket.write(withBody("POST", "/api/test/faults", fault.size(), 0) + fault);
        QVERIFY(raw->answer().first.startsWith("HTTP/1.1 200"));
    }
    void cleanupTestCase() { m_server.reset(); }

    // A refusal (or a timeout) closes the connection and says so; a body past
    // its route's limit is refused from its length alone. The guard must find
    // each request's end where the HTTP library does.
    void answers_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<int>("status"); // 0: closed without an answer
        const std::pair<const char *, std::pair<QByteArray, int>> rows[] = {
            { "head at its size", { headOf(headBytes, 3), 200 } },
            { "head a byte over", { headOf(headBytes + 1, 3), 431 } },
            { "100 headers", { headOf(4096, 100), 200 } },
            { "101 headers", { headOf(4096, 101), 431 } },
            { "JSON body at its limit",
                { withBody("DELETE", "/api/test/requests", jsonBodyBytes, jsonBodyBytes), 200 } },
            { "JSON body a byte over", { withBody("DELETE", "/api/test/requests", jsonBodyBytes + 1, 0), 413 } },
            { "mail body at its limit", { withBody("POST", "/api/test/upload", mailBodyBytes, mailBodyBytes), 200 } },
            { "mail body a byte over", { withBody("POST", "/api/test/upload", mailBodyBytes + 1, 0), 413 } },
            { "signed length", { request("POST", "/api/test/upload", "Content-Length: +2\r\n") + "{}", 400 } },
            { "chunked body", { request("POST", "/api/test/upload", "Transfer-Encoding: chunked\r\n"), 411 } },
            { "lines ending in LF alone", { "GET /api/test/requests HTTP/1.1\nHost: 127.0.0.1\n\n", 200 } },
            { "Connection: close", { request("GET", "/api/test/requests", "Connection: close\r\n"), 200 } },
            { "HTTP/1.0", { "GET /api/test/requests HTTP/1.0\r\n\r\n", 200 } },
            { "HEAD", { request("HEAD", "/api/test/requests"), 200 } },
            { "idle connection", { {}, 0 } },
            { "answer held past the idle timeout", { request("GET", "/api/held"), 200 } },
            { "unfinished head", { "GET /api/test/requests HTTP/1.1\r\n", 408 } },
            { "body short of its length", { withBody("POST", "/api/test/upload", 10, 2), 408 } },
        };
        for (const auto &[name, row] : rows)
            QTest::addRow("%s", name) << row.first << row.second;
    }
    void answers()
    {
        QFETCH(QByteArray, sent);
        QFETCH(int, status);
        const std::unique_ptr<Raw> raw = connected(*m_server);
        QVERIFY(raw);
        QElapsedTimer waited;
        waited.start();
        raw->socket.write(sent);
        const bool toHead = sent.startsWith("HEAD");
        const auto [head, body] = raw->answer(toHead);
        QCOMPARE(head.mid(9, 3).toInt(), status);
        QCOMPARE(body.isEmpty(), toHead || status == 0);
        const bool closes = status != 200 || sent.contains("close") || sent.contains("HTTP/1.0");
        QCOMPARE(head.contains("\r\nConnection: close\r\n"), closes && status != 0);
        QCOMPARE(raw->wait(&QAbstractSocket::disconnected, closes ? 5000 : 0), !closes);
        // The server's clock starts a moment before the client's.
        const int timeout = status == 408 ? requestMs : status == 0 ? idleMs : 0;
        QVERIFY(waited.elapsed() >= timeout - 20);
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
        const Server server({ u"--max-connections"_s, u"3"_s });
        std::vector<std::unique_ptr<Raw>> held;
        for (int i = 0; i < 3; ++i) {
            held.push_back(connected(server));
            // An unfinished head keeps a connection busy.
            held.back()->socket.write(busy ? "GET / HTTP/1.1\r\n" : "");
        }
        QCOMPARE(connected(server) != nullptr, !busy);
        // The soft descriptor limit was raised to the hard one.
        QFile limits(u"/proc/%1/limits"_s.arg(server.process.processId()));
        QVERIFY(limits.open(QIODevice::ReadOnly));
        QVERIFY(limits.readAll().simplified().contains("Max open files 4096 4096 files"));
        QCOMPARE(held.front()->wait(&QAbstractSocket::disconnected, busy ? 0 : 5000), busy);
        QVERIFY(held.back()->wait(&QAbstractSocket::disconnected, 0));
    }

    // Out of descriptors it cannot accept; once clients leave it accepts
    // again by itself, and says so once.
    void acceptRecoversFromExhaustion()
    {
        Server server({ u"--max-connections"_s, u"1000"_s }, u"48:48"_s);
        std::vector<std::unique_ptr<Raw>> crowd;
        QSignalSpy complained(&server.process, &QProcess::readyReadStandardError);
        for (int i = 0; i < 64; ++i)
            crowd.push_back(std::make_unique<Raw>(server.url, server.data.filePath(u"certificate.pem"_s)));
        QVERIFY(complained.wait(10000));
        crowd.clear();
        const std::unique_ptr<Raw> late = connected(server);
        QVERIFY(late);
        late->socket.write(request("GET", "/api/mobile/start/cancel"));
        QVERIFY(late->answer().first.startsWith("HTTP/1.1 302"));
        QCOMPARE(server.process.readAllStandardError().count("cannot accept connections"), 1);
    }

    // Also: sign-in starts never finished leave no codes behind once lapsed.
    void filesArePrivateUnderAnyUmask()
    {
        const mode_t before = ::umask(0);
        TestWorkspace ws({ u"--code-ttl"_s, u"0"_s, u"--auto-sign-in"_s, u"owner"_s });
        ::umask(before);
        for (int i = 0; i < 20; ++i)
            QCOMPARE(ws.send("GET", u"api/mobile/start?challenge="_s + ws.challengeOf(ws.makeVerifier())).status, 302);

        const QDir dir(ws.dataPath());
        QStringList modes { QString::number(QFileInfo(dir.path()).permissions().toInt(), 16) };
        for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden))
            modes.append(name + ' '_L1 + QString::number(QFileInfo(dir.filePath(name)).permissions().toInt(), 16));
        QCOMPARE(modes.join(", "_L1),
            u"7700, certificate.pem 6600, key.pem 6600, workspace.sqlite 6600, workspace.sqlite-shm 6600, "
            "workspace.sqlite-wal 6600"_s);

        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"lapse"_s);
        db.setDatabaseName(dir.filePath(u"workspace.sqlite"_s));
        QVERIFY(db.open());
        QSqlQuery count(u"SELECT count(*) FROM sign_in_codes"_s, db);
        QVERIFY(count.next() && count.value(0).toInt() == 1);
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceLimits)
#include "tst_workspace_limits.moc"
