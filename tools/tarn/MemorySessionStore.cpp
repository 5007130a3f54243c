#include "MemorySessionStore.h"

QCoro::Task<std::optional<QString>> MemorySessionStore::token()
{
    // A copy: QCoro's co_return of a plain lvalue moves from it, which would
    // empty the member.
    co_return std::optional<QString>(m_token);
}

QCoro::Task<> MemorySessionStore::save(QString token)
{
    m_token = std::move(token);
    co_return;
}

QCoro::Task<> MemorySessionStore::clear()
{
    m_token.reset();
    co_return;
}

QCoro::Task<> MemorySessionStore::clearEmbeddedSignIn()
{
    co_return;
}
