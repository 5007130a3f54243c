#include "workspace/WorkspaceListener.h"

#include "workspace/WorkspaceLimits.h"

#include <QSocketNotifier>
#include <QSslSocket>
#include <QTextStream>
#include <QTimer>

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

WorkspaceListener::WorkspaceListener(WorkspaceConnection::Settings connection, int maxConnections, QObject *parent)
    : QSslServer(parent)
    , m_connection(std::move(connection))
    , m_maxConnections(maxConnections)
{
    setHandshakeTimeout(m_connection.requestTimeoutMs);
    connect(this, &QSslServer::startedEncryptionHandshake, this,
        [this](QSslSocket *socket) { m_sockets.append(QPointer<QSslSocket>(socket)); });
}

bool WorkspaceListener::start(const QHostAddress &address, quint16 port)
{
    if (!listen(address, port))
        return false;
    // QTcpServer retries a failed accept at once for as long as it fails;
    // the listening socket is watched here instead.
    pauseAccepting();
    m_accepting = new QSocketNotifier(socketDescriptor(), QSocketNotifier::Read, this);
    connect(m_accepting, &QSocketNotifier::activated, this, &WorkspaceListener::acceptAll);
    return true;
}

QTcpSocket *WorkspaceListener::nextPendingConnection()
{
    QTcpSocket *socket = QSslServer::nextPendingConnection();
    // Taking a connection turns QTcpServer's own watch back on.
    pauseAccepting();
    if (socket)
        new WorkspaceConnection(*socket, m_connection);
    return socket;
}

void WorkspaceListener::acceptAll()
{
    for (;;) {
        const int descriptor = ::accept4(int(socketDescriptor()), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (descriptor >= 0)
            admit(descriptor);
        else if (errno == EAGAIN || errno == EWOULDBLOCK)
            return;
        else if (errno != EINTR && errno != ECONNABORTED)
            return acceptFailed(errno);
    }
}

void WorkspaceListener::admit(int descriptor)
{
    if (openConnections() >= m_maxConnections && !shedIdle()) {
        ::close(descriptor);
        return;
    }
    incomingConnection(descriptor);
}

qsizetype WorkspaceListener::openConnections()
{
    m_sockets.removeIf([](const QPointer<QSslSocket> &socket) {
        return !socket || socket->state() == QAbstractSocket::UnconnectedState;
    });
    return m_sockets.size();
}

bool WorkspaceListener::shedIdle()
{
    QSslSocket *oldest = nullptr;
    qint64 longest = -1;
    for (QSslSocket *socket : std::as_const(m_sockets)) {
        const WorkspaceConnection *connection = WorkspaceConnection::of(socket);
        if (connection && connection->isIdle() && connection->idleMs() > longest) {
            oldest = socket;
            longest = connection->idleMs();
        }
    }
    if (!oldest)
        return false;
    oldest->abort();
    openConnections();
    return true;
}

void WorkspaceListener::acceptFailed(int error)
{
    if (!m_failureLogged.isValid() || m_failureLogged.hasExpired(WorkspaceLimits::acceptLogIntervalMs)) {
        m_failureLogged.start();
        QTextStream(stderr) << "tarn-workspace: cannot accept connections ("
                            << QString::fromLocal8Bit(std::strerror(error)) << "); retrying every "
                            << WorkspaceLimits::acceptRetryMs << " ms" << Qt::endl;
    }
    // The waiting connection stays queued; a descriptor is freed if any
    // connection is idle, and accepting resumes shortly.
    m_accepting->setEnabled(false);
    shedIdle();
    QTimer::singleShot(WorkspaceLimits::acceptRetryMs, m_accepting, [this] { m_accepting->setEnabled(true); });
}
