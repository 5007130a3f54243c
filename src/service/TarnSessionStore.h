#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

// Where the session token lives between runs. The service client reads it for
// every request and clears it when the service says the session is over; the
// keychain-backed implementation is NativeSessionStore.
class TarnSessionStore {
public:
    virtual ~TarnSessionStore() = default;

    // The stored token, or nothing when there is none (or it cannot be read).
    virtual QCoro::Task<std::optional<QString>> token() = 0;
    // Stores the token, replacing any earlier one. Throws when it cannot.
    virtual QCoro::Task<> save(QString token) = 0;
    // Forgets the token; never fails.
    virtual QCoro::Task<> clear() = 0;
    // Forgets the sign-in that the embedded web workspace keeps beside ours.
    virtual QCoro::Task<> clearEmbeddedSignIn() = 0;
};
