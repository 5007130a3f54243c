#include "workspace/WorkspaceResponder.h"

#include "workspace/WorkspaceConnection.h"
#include "workspace/WorkspaceReply.h"

#include <QHttpServerResponder>
#include <QMetaEnum>

#include <utility>

WorkspaceResponder::WorkspaceResponder(QHttpServerResponder &&responder, Body body)
    : m_responder(std::make_unique<QHttpServerResponder>(std::move(responder)))
    , m_socket(m_responder->socket())
    , m_body(body)
{
}

WorkspaceResponder::WorkspaceResponder(WorkspaceResponder &&other) noexcept = default;

WorkspaceResponder &WorkspaceResponder::operator=(WorkspaceResponder &&other) noexcept
{
    if (this != &other) {
        abandon();
        m_responder = std::move(other.m_responder);
        m_socket = std::move(other.m_socket);
        m_body = other.m_body;
        m_witness = std::move(other.m_witness);
    }
    return *this;
}

WorkspaceResponder::~WorkspaceResponder()
{
    abandon();
}

void WorkspaceResponder::abandon()
{
    // A request nobody answered would leave its client waiting for ever.
    if (m_responder && isConnected())
        m_socket->disconnectFromHost();
    m_responder.reset();
}

bool WorkspaceResponder::isConnected() const
{
    return m_socket && m_socket->state() == QAbstractSocket::ConnectedState;
}

void WorkspaceResponder::send(const WorkspaceReply &reply)
{
    if (!m_responder)
        return;
    const std::unique_ptr<QHttpServerResponder> responder = std::move(m_responder);
    if (const auto witness = std::exchange(m_witness, {}))
        witness(reply);
    if (!isConnected())
        return;
    const int status = canWrite(reply.status) ? reply.status : 500;

    responder->writeStatusLine(static_cast<QHttpServerResponder::StatusCode>(status));
    if (!reply.contentType.isEmpty())
        responder->writeHeader("Content-Type", reply.contentType);
    for (const auto &[name, value] : reply.headers)
        responder->writeHeader(name, value);
    responder->writeHeader("Content-Length", QByteArray::number(reply.body.size()));
    WorkspaceConnection *const connection = WorkspaceConnection::of(m_socket);
    if (connection && connection->closesAfterAnswer())
        responder->writeHeader("Connection", "close");
    responder->writeBody(m_body == Body::Send ? reply.body : QByteArray());
    if (connection)
        connection->answered();
}

bool WorkspaceResponder::canWrite(int status)
{
    return QMetaEnum::fromType<QHttpServerResponder::StatusCode>().valueToKey(status) != nullptr;
}
