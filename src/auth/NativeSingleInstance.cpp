#include "auth/NativeSingleInstance.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maximumMessage = 8192;

QString runtimeFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    return folder;
}

} // namespace

NativeSingleInstance::NativeSingleInstance(const QString &name, QObject *parent)
    : QObject(parent)
    , m_lockPath(runtimeFolder() + u'/' + name + u".lock"_s)
    , m_serverPath(runtimeFolder() + u'/' + name + u".socket"_s)
{
}

NativeSingleInstance::~NativeSingleInstance() = default;

bool NativeSingleInstance::claim()
{
    m_lock = std::make_unique<QLockFile>(m_lockPath);
    // A lock left by a killed instance is taken over: QLockFile checks whether its process still lives.
    if (!m_lock->tryLock(0)) {
        m_lock.reset();
        return false;
    }
    QLocalServer::removeServer(m_serverPath);
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server->listen(m_serverPath))
        qWarning("Could not listen for later starts: %s", qPrintable(m_server->errorString()));
    connect(m_server.get(), &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server->nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] { readFrom(socket); });
        }
    });
    return true;
}

void NativeSingleInstance::readFrom(QLocalSocket *socket)
{
    if (socket->bytesAvailable() > maximumMessage) {
        socket->abort();
        return;
    }
    if (!socket->canReadLine())
        return;
    const QString line = QString::fromUtf8(socket->readLine()).trimmed();
    socket->disconnectFromServer();
    if (line.isEmpty()) {
        Q_EMIT activated({});
        return;
    }
    const QUrl url(line, QUrl::StrictMode);
    // Only our own scheme is ever acted on; anything else is dropped unread.
    if (url.isValid() && url.scheme() == "pilo-tarn"_L1)
        Q_EMIT activated(url);
}

bool NativeSingleInstance::forward(const QUrl &url) const
{
    // A starting instance may hold the lock a moment before it listens.
    const QDeadlineTimer deadline(2000);
    do {
        QLocalSocket socket;
        socket.connectToServer(m_serverPath);
        if (socket.waitForConnected(200)) {
            socket.write(url.toString(QUrl::FullyEncoded).toUtf8() + '\n');
            return socket.waitForBytesWritten(1000) || socket.bytesToWrite() == 0;
        }
        QThread::msleep(50);
    } while (!deadline.hasExpired());
    return false;
}
