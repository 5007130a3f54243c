#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

#include <functional>

class QTcpSocket;

// The guard of one connection, in front of the HTTP library. It reads each
// request's head as it arrives (peeking, so the library still reads every
// byte itself), refuses what is over a limit before the library buffers it,
// times out slow requests and idle connections, and closes after the answer
// when the client asked for that. Made as the socket's child before the
// library connects to it, so its readyRead handler runs first.
class WorkspaceConnection : public QObject {
    Q_OBJECT

public:
    struct Settings {
        int idleTimeoutMs = 0;
        int requestTimeoutMs = 0;
        // The largest body the route of this method and path takes.
        std::function<qint64(QByteArrayView method, QByteArrayView path)> bodyLimit;
    };

    WorkspaceConnection(QTcpSocket &socket, Settings settings);

    // The guard of a socket the listener handed on; null for any other.
    [[nodiscard]] static WorkspaceConnection *of(const QObject *socket);

    // Connected with no request under way and no answer owed.
    [[nodiscard]] bool isIdle() const { return m_phase == Phase::Idle; }
    [[nodiscard]] qint64 idleMs() const { return m_since.elapsed(); }
    // Whether the answer now owed ends the connection (Connection: close, HTTP/1.0).
    [[nodiscard]] bool closesAfterAnswer() const { return !m_owed.isEmpty() && m_owed.first(); }
    // Called once the answer owed has been written.
    void answered();

private:
    enum class Phase { Idle, Request, Answering, Refused, Closed };

    void inspect();
    // Takes head bytes from data at pos; false when the connection was refused.
    bool takeHead(const QByteArray &data, qsizetype &pos);
    bool readHead(const QByteArray &head);
    void complete();
    void becomeIdle();
    void expire();
    void refuse(int status, const QString &message);

    QTcpSocket &m_socket;
    Settings m_settings;
    Phase m_phase = Phase::Idle;
    QTimer m_timer;
    // Since the connection went idle, or since its refusal.
    QElapsedTimer m_since;
    QByteArray m_head;
    qint64 m_bodyLeft = 0;
    bool m_closes = false;
    // One entry per request handed on and not yet answered: whether its answer closes.
    QList<bool> m_owed;
};
