// Loads a local tarn-workspace from loopback and prints what it measured:
// requests per second and p99 for 200 keep-alive clients, how soon a new
// client is served after 2,000 idle connections are dropped, and the
// server's peak memory while 5 clients each send 200 MB it must refuse.
// Every phase is bounded in connections and in time.

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <memory>
#include <vector>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int keepAliveClients = 200;
constexpr int loadSeconds = 5;
constexpr int idleConnections = 2000;
constexpr int uploadClients = 5;
constexpr qint64 uploadBytes = 200LL * 1000 * 1000;
constexpr int phaseLimitMs = 60'000;

QTextStream out(stdout);

struct Server {
    QTemporaryDir data;
    QProcess process;
    QUrl url;
    QSslConfiguration tls;

    bool start()
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(TARN_WORKSPACE_BIN),
            { u"--port"_s, u"0"_s, u"--data"_s, data.path(), u"--stop-with-stdin"_s });
        QString certificate;
        while (certificate.isEmpty() && process.waitForReadyRead(20'000)) {
            while (process.canReadLine()) {
                const QString line = QString::fromUtf8(process.readLine()).trimmed();
                if (line.startsWith("url: "_L1))
                    url = QUrl(line.mid(5));
                else if (line.startsWith("certificate: "_L1))
                    certificate = line.mid(13);
            }
        }
        tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates(QSslCertificate::fromPath(certificate));
        return !certificate.isEmpty();
    }

    // Resident memory in KiB, from /proc.
    [[nodiscard]] qint64 rssKiB() const
    {
        QFile status(u"/proc/%1/status"_s.arg(process.processId()));
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("VmRSS:"))
                return line.mid(6).trimmed().split(' ').first().toLongLong();
        }
        return 0;
    }
};

// Runs the event loop until done() or the phase's time runs out.
template <typename Done> bool runUntil(Done done, int limitMs = phaseLimitMs)
{
    const QDeadlineTimer deadline(limitMs);
    while (!done() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return done();
}

std::unique_ptr<QSslSocket> open(const Server &server)
{
    auto socket = std::make_unique<QSslSocket>();
    socket->setSslConfiguration(server.tls);
    socket->connectToHostEncrypted(server.url.host(), quint16(server.url.port()));
    return socket;
}

// The status of the first whole answer in buffer, 0 until one is there.
int answerIn(QByteArray &buffer)
{
    const qsizetype end = buffer.indexOf("\r\n\r\n");
    if (end < 0)
        return 0;
    const qsizetype at = buffer.toLower().indexOf("content-length:");
    const qsizetype length
        = at < 0 ? 0 : buffer.mid(at + 15, buffer.indexOf('\r', at) - at - 15).trimmed().toLongLong();
    if (buffer.size() < end + 4 + length)
        return 0;
    const int status = buffer.mid(9, 3).toInt();
    buffer.remove(0, end + 4 + length);
    return status;
}

const QByteArray cheapRequest = "GET /api/mobile/start/cancel HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n";

void keepAlive(const Server &server)
{
    std::vector<std::unique_ptr<QSslSocket>> clients;
    std::vector<QByteArray> buffers(keepAliveClients);
    std::vector<QElapsedTimer> sent(keepAliveClients);
    std::vector<qint64> latenciesUs;
    latenciesUs.reserve(1'000'000);
    bool running = true;
    int failures = 0;
    QElapsedTimer clock;
    for (int i = 0; i < keepAliveClients; ++i) {
        clients.push_back(open(server));
        QSslSocket *socket = clients.back().get();
        QObject::connect(socket, &QSslSocket::encrypted, socket, [socket, &sent, i] {
            sent[i].start();
            socket->write(cheapRequest);
        });
        QObject::connect(socket, &QIODevice::readyRead, socket, [&, socket, i] {
            buffers[i] += socket->readAll();
            while (const int status = answerIn(buffers[i])) {
                if (clock.isValid())
                    latenciesUs.push_back(sent[i].nsecsElapsed() / 1000);
                failures += status == 302 ? 0 : 1;
                if (running) {
                    sent[i].start();
                    socket->write(cheapRequest);
                }
            }
        });
    }
    // Measured once every client is connected and busy.
    runUntil(
        [&] { return std::all_of(clients.begin(), clients.end(), [](const auto &c) { return c->isEncrypted(); }); });
    latenciesUs.clear();
    clock.start();
    runUntil([&] { return clock.hasExpired(loadSeconds * 1000); });
    running = false;
    const double seconds = double(clock.elapsed()) / 1000.0;
    std::sort(latenciesUs.begin(), latenciesUs.end());
    const qint64 p99 = latenciesUs.empty() ? 0 : latenciesUs.at(latenciesUs.size() * 99 / 100);
    out << "keep-alive: " << keepAliveClients << " clients, " << qRound(double(latenciesUs.size()) / seconds)
        << " requests/s, p99 " << double(p99) / 1000.0 << " ms, " << failures << " unexpected answers" << Qt::endl;
}

void idleThenDropped(const Server &server)
{
    std::vector<std::unique_ptr<QSslSocket>> idle;
    QElapsedTimer opening;
    opening.start();
    int settled = 0;
    for (int i = 0; i < idleConnections; ++i) {
        idle.push_back(open(server));
        QSslSocket *socket = idle.back().get();
        QObject::connect(socket, &QSslSocket::encrypted, socket, [&settled] { ++settled; });
        QObject::connect(socket, &QAbstractSocket::disconnected, socket, [&settled] { ++settled; });
        // Handshakes in batches, so the listen queue never overflows.
        if (i % 100 == 99)
            runUntil([&] { return settled > i - 50; }, 10'000);
    }
    runUntil([&] { return settled >= idleConnections; }, 20'000);
    const auto stillOpen = std::count_if(idle.begin(), idle.end(), [](const auto &s) { return s->isEncrypted(); });
    out << "idle: " << idleConnections << " opened in " << opening.elapsed() << " ms, " << stillOpen
        << " open as the clients saw it (the server sheds the idlest at its cap)" << Qt::endl;

    idle.clear();
    QElapsedTimer recovery;
    recovery.start();
    auto late = open(server);
    QByteArray buffer;
    int status = 0;
    QObject::connect(late.get(), &QSslSocket::encrypted, late.get(), [&] { late->write(cheapRequest); });
    QObject::connect(late.get(), &QIODevice::readyRead, late.get(), [&] {
        buffer += late->readAll();
        status = answerIn(buffer);
    });
    runUntil([&] { return status != 0; });
    out << "recovery: a new client was answered " << recovery.elapsed() << " ms after the drop (status " << status
        << ")" << Qt::endl;
}

void oversizedUploads(const Server &server)
{
    const qint64 idleRss = server.rssKiB();
    qint64 peakRss = idleRss;
    QTimer sampler;
    QObject::connect(&sampler, &QTimer::timeout, &sampler, [&] { peakRss = std::max(peakRss, server.rssKiB()); });
    sampler.start(10);

    const QByteArray chunk(256 * 1024, 'x');
    std::vector<std::unique_ptr<QSslSocket>> clients;
    std::vector<QByteArray> buffers(uploadClients);
    std::vector<int> statuses(uploadClients, 0);
    std::vector<qint64> written(uploadClients, 0);
    std::vector<bool> ended(uploadClients, false);
    // The body is topped up on a timer rather than from the socket's write
    // signals, so that the sockets get to read the refusal while sending.
    QTimer feeder;
    QObject::connect(&feeder, &QTimer::timeout, &feeder, [&] {
        for (int i = 0; i < uploadClients; ++i) {
            QSslSocket *socket = clients.at(i).get();
            while (socket->isEncrypted() && statuses[i] == 0 && written[i] < uploadBytes
                && socket->bytesToWrite() < 1024 * 1024) {
                socket->write(chunk);
                written[i] += chunk.size();
            }
        }
    });
    for (int i = 0; i < uploadClients; ++i) {
        clients.push_back(open(server));
        QSslSocket *socket = clients.back().get();
        QObject::connect(socket, &QSslSocket::encrypted, socket, [socket] {
            socket->write("POST /api/mobile/exchange HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\n"
                          "Content-Length: "
                + QByteArray::number(uploadBytes) + "\r\n\r\n");
        });
        QObject::connect(socket, &QIODevice::readyRead, socket, [&, socket, i] {
            buffers[i] += socket->readAll();
            if (statuses[i] == 0)
                statuses[i] = answerIn(buffers[i]);
        });
        QObject::connect(socket, &QAbstractSocket::disconnected, socket, [&ended, i] { ended[i] = true; });
    }
    feeder.start(1);
    runUntil([&] { return std::all_of(ended.begin(), ended.end(), [](bool e) { return e; }); });
    sampler.stop();

    const auto refused = std::count(statuses.begin(), statuses.end(), 413);
    qint64 sentTotal = 0;
    for (const qint64 n : written)
        sentTotal += n;
    out << "uploads: " << uploadClients << " clients offering " << uploadBytes / 1'000'000 << " MB each: " << refused
        << " refused with 413, " << sentTotal / (1024 * 1024) << " MiB written before the refusal; server RSS idle "
        << idleRss / 1024 << " MiB, peak " << peakRss / 1024 << " MiB (+" << (peakRss - idleRss) / 1024 << " MiB)"
        << Qt::endl;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    rlimit limit {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);

    Server server;
    if (!server.start()) {
        out << "bench_workspace_load: tarn-workspace did not start" << Qt::endl;
        return 1;
    }
    keepAlive(server);
    idleThenDropped(server);
    oversizedUploads(server);
    server.process.closeWriteChannel();
    server.process.waitForFinished(5000);
    return 0;
}
