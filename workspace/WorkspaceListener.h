#pragma once

#include "workspace/WorkspaceConnection.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QList>
#include <QPointer>
#include <QSslServer>

class QSocketNotifier;
class QSslSocket;

// The TLS listener in front of the HTTP library: it accepts connections
// itself, so that running out of descriptors pauses accepting for a moment
// instead of stopping it (or spinning on it); caps the open connections,
// closing the one idle longest for a newcomer; and puts a
// WorkspaceConnection on every connection it hands on.
class WorkspaceListener : public QSslServer {
    Q_OBJECT

public:
    WorkspaceListener(WorkspaceConnection::Settings connection, int maxConnections, QObject *parent = nullptr);

    [[nodiscard]] bool start(const QHostAddress &address, quint16 port);
    QTcpSocket *nextPendingConnection() override;

private:
    void acceptAll();
    void admit(int descriptor);
    // The connections still open, handshakes included.
    qsizetype openConnections();
    // Closes the connection idle longest; false when none is idle.
    bool shedIdle();
    void acceptFailed(int error);

    WorkspaceConnection::Settings m_connection;
    int m_maxConnections = 0;
    QSocketNotifier *m_accepting = nullptr;
    QList<QPointer<QSslSocket>> m_sockets;
    QElapsedTimer m_failureLogged;
};
