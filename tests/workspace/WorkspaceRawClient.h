#pragma once

#include <QByteArray>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QUrl>

#include <optional>

// One TLS connection to the workspace that writes bytes exactly as given,
// for requests no HTTP client would send. Waits are QSignalSpy waits.
class WorkspaceRawClient {
public:
    struct Answer {
        int status = 0;
        QByteArray head;
        QByteArray body;

        [[nodiscard]] bool hasHeader(QByteArrayView line) const;
    };

    WorkspaceRawClient(const QUrl &url, const QString &certificatePath);

    // Starts the TLS handshake without waiting for it.
    void start();
    // Completes the TLS handshake.
    [[nodiscard]] bool connect();
    void write(const QByteArray &bytes);
    // The next whole answer (its head and Content-Length body); nothing when
    // the connection closed or nothing came in time.
    [[nodiscard]] std::optional<Answer> read(const QByteArray &method = "GET");
    // Waits for the server to close the connection.
    [[nodiscard]] bool closes(int timeoutMs = 5000);
    [[nodiscard]] bool isOpen() const { return m_socket.state() == QAbstractSocket::ConnectedState; }

private:
    QUrl m_url;
    QSslSocket m_socket;
    QByteArray m_buffer;
};
