#pragma once

#include <QString>

#include <exception>

// Thrown by the decoding layer when an answer does not have the shape of its
// record: a missing required key, a wrong type, or bytes that are not JSON.
// The service client turns it into TarnAPIError::invalidResponse; `where` is
// for logs and tests only and never shown to the user.
class TarnDecodeError : public std::exception {
public:
    explicit TarnDecodeError(QString where)
        : m_where(std::move(where))
    {
    }
    const char *what() const noexcept override { return "undecodable service answer"; }
    const QString &where() const { return m_where; }

private:
    QString m_where;
};
