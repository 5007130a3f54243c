#pragma once

#include "service/TarnSessionStore.h"

// A token held only in this process, for `--token-stdin`: it is never written
// anywhere and is forgotten when the command ends.
class MemorySessionStore final : public TarnSessionStore {
public:
    explicit MemorySessionStore(QString token)
        : m_token(std::move(token))
    {
    }

    QCoro::Task<std::optional<QString>> token() override;
    QCoro::Task<> save(QString token) override;
    QCoro::Task<> clear() override;
    QCoro::Task<> clearEmbeddedSignIn() override;

private:
    std::optional<QString> m_token;
};
