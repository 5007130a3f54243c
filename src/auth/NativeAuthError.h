#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

// The error of sign-in and of connecting a Google account; text() is shown.
class NativeAuthError : public std::exception {
public:
    enum class Kind {
        failed, // with the message to show
        keychain, // the secure store refused the token
    };

    [[nodiscard]] static NativeAuthError failed(QString message) { return { Kind::failed, std::move(message) }; }
    [[nodiscard]] static NativeAuthError keychain() { return { Kind::keychain, {} }; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] QString text() const;
    const char *what() const noexcept override { return m_what.constData(); }

private:
    NativeAuthError(Kind kind, QString message);

    Kind m_kind;
    QString m_message;
    QByteArray m_what;
};
