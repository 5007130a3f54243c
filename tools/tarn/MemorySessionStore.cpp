#include "MemorySessionStore.h"

QCoro::Task<std::optional<QString>> MemorySessionStore::token()
{
    co_return m_token;
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
