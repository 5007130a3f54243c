#include "workspace/WorkspaceConnection.h"

#include "workspace/WorkspaceLimits.h"
#include "workspace/WorkspaceReply.h"

#include <QTcpSocket>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QByteArray reasonOf(int status)
{
    switch (status) {
    case 408:
        return "Request Timeout"_ba;
    case 411:
        return "Length Required"_ba;
    case 413:
        return "Content Too Large"_ba;
    case 431:
        return "Request Header Fields Too Large"_ba;
    default:
        return "Bad Request"_ba;
    }
}

// Just past the blank line that ends a head, or -1. Lines may end in a bare
// LF, as the HTTP library allows; the two must agree on where a body starts.
qsizetype headEnd(const QByteArray &head, qsizetype from)
{
    const qsizetype lf = head.indexOf("\n\n", from);
    const qsizetype crlf = head.indexOf("\n\r\n", from);
    if (crlf >= 0 && (lf < 0 || crlf < lf))
        return crlf + 3;
    return lf < 0 ? -1 : lf + 2;
}

bool isLength(const QByteArray &value)
{
    return !value.isEmpty() && value.size() <= 18
        && std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool hasToken(const QByteArray &list, QByteArrayView token)
{
    for (const QByteArray &item : list.split(',')) {
        if (item.trimmed().compare(token, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace

WorkspaceConnection::WorkspaceConnection(QTcpSocket &socket, Settings settings)
    : QObject(&socket)
    , m_socket(socket)
    , m_settings(std::move(settings))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &WorkspaceConnection::expire);
    connect(&socket, &QIODevice::readyRead, this, &WorkspaceConnection::inspect);
    becomeIdle();
}

WorkspaceConnection *WorkspaceConnection::of(const QObject *socket)
{
    return socket ? socket->findChild<WorkspaceConnection *>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

void WorkspaceConnection::inspect()
{
    if (m_phase == Phase::Refused || m_phase == Phase::Closed) {
        m_socket.readAll();
        if (m_phase == Phase::Refused && m_since.elapsed() < WorkspaceLimits::refusalDrainMs)
            m_timer.start(WorkspaceLimits::refusalQuietMs);
        return;
    }
    // Everything available is new: the library reads all of it right after us.
    const QByteArray data = m_socket.peek(m_socket.bytesAvailable());
    qsizetype pos = 0;
    while (pos < data.size()) {
        if (m_bodyLeft > 0) {
            const qint64 take = qMin<qint64>(m_bodyLeft, data.size() - pos);
            m_bodyLeft -= take;
            pos += take;
            if (m_bodyLeft == 0)
                complete();
        } else if (!takeHead(data, pos)) {
            return;
        }
    }
}

bool WorkspaceConnection::takeHead(const QByteArray &data, qsizetype &pos)
{
    if (m_head.isEmpty() && m_owed.isEmpty()) {
        m_phase = Phase::Request;
        m_timer.start(m_settings.requestTimeoutMs);
    }
    const qsizetype before = m_head.size();
    m_head.append(data.constData() + pos, qMin(data.size() - pos, WorkspaceLimits::headBytes + 1 - before));
    const qsizetype end = headEnd(m_head, qMax<qsizetype>(0, before - 2));
    if (end < 0 || end > WorkspaceLimits::headBytes) {
        if (end < 0 && m_head.size() <= WorkspaceLimits::headBytes) {
            pos = data.size();
            return true;
        }
        refuse(431, u"The request's headers are too large."_s);
        return false;
    }
    pos += end - before;
    const QByteArray head = m_head.left(end).trimmed();
    m_head.clear();
    return readHead(head);
}

bool WorkspaceConnection::readHead(const QByteArray &head)
{
    const QList<QByteArray> lines = head.split('\n');
    if (lines.size() - 1 > WorkspaceLimits::headerCount) {
        refuse(431, u"The request has too many headers."_s);
        return false;
    }
    const QList<QByteArray> requestLine = lines.first().trimmed().split(' ');
    if (requestLine.size() != 3 || !requestLine.at(2).startsWith("HTTP/1.")) {
        refuse(400, u"The request is malformed."_s);
        return false;
    }
    m_closes = requestLine.at(2) == "HTTP/1.0";

    qint64 length = 0;
    bool lengthSeen = false;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray &line = lines.at(i);
        const qsizetype colon = line.indexOf(':');
        const QByteArray name = line.left(colon).trimmed();
        const QByteArray value = line.mid(colon + 1).trimmed();
        if (name.compare("Content-Length", Qt::CaseInsensitive) == 0) {
            const qint64 given = isLength(value) ? value.toLongLong() : -1;
            if (given < 0 || (lengthSeen && given != length)) {
                refuse(400, u"The request's Content-Length is not a length."_s);
                return false;
            }
            length = given;
            lengthSeen = true;
        } else if (name.compare("Transfer-Encoding", Qt::CaseInsensitive) == 0) {
            // Only a declared length lets the body be refused before it is read.
            refuse(411, u"Send the body with a Content-Length."_s);
            return false;
        } else if (name.compare("Connection", Qt::CaseInsensitive) == 0 && hasToken(value, "close")) {
            m_closes = true;
        }
    }

    const QByteArray &target = requestLine.at(1);
    const qsizetype mark = target.indexOf('?');
    const QByteArrayView path = QByteArrayView(target).first(mark < 0 ? target.size() : mark);
    if (length > m_settings.bodyLimit(requestLine.first(), path)) {
        refuse(413, u"The request is too large."_s);
        return false;
    }
    m_bodyLeft = length;
    if (length == 0)
        complete();
    return true;
}

void WorkspaceConnection::complete()
{
    m_owed.append(m_closes);
    m_phase = Phase::Answering;
    m_timer.stop();
}

void WorkspaceConnection::answered()
{
    if (m_owed.isEmpty() || m_phase == Phase::Refused || m_phase == Phase::Closed)
        return;
    if (m_owed.takeFirst()) {
        m_phase = Phase::Closed;
        m_timer.stop();
        m_socket.disconnectFromHost();
    } else if (m_owed.isEmpty() && m_head.isEmpty() && m_bodyLeft == 0) {
        becomeIdle();
    } else if (m_owed.isEmpty()) {
        m_phase = Phase::Request;
        m_timer.start(m_settings.requestTimeoutMs);
    }
}

void WorkspaceConnection::becomeIdle()
{
    m_phase = Phase::Idle;
    m_since.start();
    m_timer.start(m_settings.idleTimeoutMs);
}

void WorkspaceConnection::expire()
{
    switch (m_phase) {
    case Phase::Request:
        refuse(408, u"The request took too long to arrive."_s);
        return;
    case Phase::Idle:
    case Phase::Refused:
        m_phase = Phase::Closed;
        m_socket.disconnectFromHost();
        return;
    case Phase::Answering:
    case Phase::Closed:
        return;
    }
}

void WorkspaceConnection::refuse(int status, const QString &message)
{
    // The library has not seen these bytes; it must not see any more.
    m_socket.readAll();
    m_phase = Phase::Refused;
    m_head.clear();
    m_bodyLeft = 0;
    const WorkspaceReply reply = WorkspaceReply::error(status, message);
    m_socket.write("HTTP/1.1 " + QByteArray::number(status) + ' ' + reasonOf(status)
        + "\r\nContent-Type: " + reply.contentType + "\r\nContent-Length: " + QByteArray::number(reply.body.size())
        + "\r\nConnection: close\r\n\r\n" + reply.body);
    // Closing with unread input would reset the connection before the
    // client reads the refusal; what it still sends is dropped until it
    // pauses, for a while at most.
    m_since.start();
    m_timer.start(WorkspaceLimits::refusalQuietMs);
}
