#pragma once

#include "service/TarnSessionStore.h"

#include <QString>

// The session token in the system's secure store (Secret Service on Linux,
// the login keychain on the Mac): one item, service
// "co.halvard.pilo-tarn.session", account "tarn_session", holding the token's
// UTF-8 bytes. There is deliberately no plaintext fallback: without a
// working secure store nothing is kept and sign-in says so.
class NativeSessionStore final : public TarnSessionStore {
public:
    NativeSessionStore() = default;
    // A store under another service name, so tests never meet the real item.
    explicit NativeSessionStore(QString service)
        : m_service(std::move(service))
    {
    }

    QCoro::Task<std::optional<QString>> token() override;
    // An empty token is refused as an unreadable answer; a store that cannot
    // write throws NativeAuthError::keychain.
    QCoro::Task<> save(QString token) override;
    QCoro::Task<> clear() override;
    QCoro::Task<> clearEmbeddedSignIn() override;

    static constexpr auto account = "tarn_session";
    static constexpr auto defaultService = "co.halvard.pilo-tarn.session";

private:
    QCoro::Task<> remove(QString service, QString key);

    QString m_service = QString::fromLatin1(defaultService);
};
