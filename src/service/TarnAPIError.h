#pragma once

#include <QString>

#include <exception>

// The one error of every service call. Its text() is what screens show.
class TarnAPIError : public std::exception {
public:
    enum class Kind {
        server, // the service refused, with its own message (or one built from the status)
        signedOut, // the session is gone; the client has already cleared it
        invalidResponse, // the answer had no usable shape
        transport, // the network itself failed (offline, timeout, TLS); the platform's text
    };

    [[nodiscard]] static TarnAPIError server(QString message) { return { Kind::server, std::move(message) }; }
    [[nodiscard]] static TarnAPIError signedOut() { return { Kind::signedOut, {} }; }
    [[nodiscard]] static TarnAPIError invalidResponse() { return { Kind::invalidResponse, {} }; }
    [[nodiscard]] static TarnAPIError transport(QString message) { return { Kind::transport, std::move(message) }; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] QString text() const;
    const char *what() const noexcept override;

private:
    TarnAPIError(Kind kind, QString message);

    Kind m_kind;
    QString m_message;
    QByteArray m_what;
};
