#include "service/TarnAPIError.h"

using namespace Qt::StringLiterals;

TarnAPIError::TarnAPIError(Kind kind, QString message)
    : m_kind(kind)
    , m_message(std::move(message))
    , m_what(text().toUtf8())
{
}

QString TarnAPIError::text() const
{
    switch (m_kind) {
    case Kind::server:
    case Kind::transport:
        return m_message;
    case Kind::signedOut:
        return u"Sign in to Pilo Tarn again."_s;
    case Kind::invalidResponse:
        return u"Pilo Tarn returned an unreadable response. Try again."_s;
    }
    return m_message;
}

const char *TarnAPIError::what() const noexcept
{
    return m_what.constData();
}
