#include "WorkspaceRawClient.h"

#include <QSignalSpy>
#include <QSslCertificate>
#include <QTestEventLoop>

using namespace Qt::StringLiterals;

namespace {

constexpr int waitMs = 5000;

} // namespace

bool WorkspaceRawClient::Answer::hasHeader(QByteArrayView line) const
{
    const QByteArray wanted = "\r\n" + line.toByteArray().toLower() + "\r\n";
    return head.toLower().contains(wanted);
}

WorkspaceRawClient::WorkspaceRawClient(const QUrl &url, const QString &certificatePath)
    : m_url(url)
{
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setCaCertificates(QSslCertificate::fromPath(certificatePath));
    m_socket.setSslConfiguration(tls);
    // Kept as it comes: what arrives just before the server closes must not be lost.
    QObject::connect(&m_socket, &QIODevice::readyRead, &m_socket, [this] { m_buffer += m_socket.readAll(); });
}

void WorkspaceRawClient::start()
{
    m_socket.connectToHostEncrypted(m_url.host(), quint16(m_url.port()));
}

bool WorkspaceRawClient::connect()
{
    // Ends on the handshake or on the server closing the connection instead.
    QTestEventLoop loop;
    QObject::connect(&m_socket, &QSslSocket::encrypted, &loop, &QTestEventLoop::exitLoop);
    QObject::connect(&m_socket, &QAbstractSocket::disconnected, &loop, &QTestEventLoop::exitLoop);
    start();
    loop.enterLoopMSecs(waitMs);
    return m_socket.isEncrypted();
}

void WorkspaceRawClient::write(const QByteArray &bytes)
{
    m_socket.write(bytes);
}

std::optional<WorkspaceRawClient::Answer> WorkspaceRawClient::read(const QByteArray &method)
{
    QSignalSpy arrived(&m_socket, &QIODevice::readyRead);
    for (;;) {
        const qsizetype end = m_buffer.indexOf("\r\n\r\n");
        if (end >= 0) {
            Answer answer;
            answer.head = m_buffer.left(end + 2);
            answer.status = m_buffer.mid(9, 3).toInt();
            const qsizetype at = answer.head.toLower().indexOf("\r\ncontent-length:");
            const qsizetype length = method == "HEAD" || at < 0
                ? 0
                : answer.head.mid(at + 17, answer.head.indexOf('\r', at + 2) - at - 17).trimmed().toLongLong();
            if (m_buffer.size() >= end + 4 + length) {
                answer.body = m_buffer.mid(end + 4, length);
                m_buffer.remove(0, end + 4 + length);
                return answer;
            }
        }
        if (!isOpen() || !arrived.wait(waitMs))
            return std::nullopt;
    }
}

bool WorkspaceRawClient::closes(int timeoutMs)
{
    QSignalSpy disconnected(&m_socket, &QAbstractSocket::disconnected);
    return !isOpen() || disconnected.wait(timeoutMs);
}
