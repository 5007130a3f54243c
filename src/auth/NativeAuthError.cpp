#include "auth/NativeAuthError.h"

#include "auth/NativePlatformText.h"

NativeAuthError::NativeAuthError(Kind kind, QString message)
    : m_kind(kind)
    , m_message(std::move(message))
    , m_what(text().toUtf8())
{
}

QString NativeAuthError::text() const
{
    if (m_kind == Kind::keychain)
        return NativePlatformText::get(NativePlatformText::Id::keychainSaveFailed);
    return m_message;
}
