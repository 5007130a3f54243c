#pragma once

#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"
#include "support/TestWorkspace.h"

#include <QSettings>
#include <QTemporaryDir>

#include <list>
#include <memory>

// A real workspace and service clients signed in as demo people, each with
// the token in the test keyring under a name of its own.
class MailTestClient {
public:
    // Why it could not start; empty when it did.
    [[nodiscard]] QString start();
    // A client signed in as the person with this address; null on failure.
    [[nodiscard]] TarnAPI *signIn(const QString &email);

    std::unique_ptr<TestWorkspace> workspace;

private:
    struct Session {
        std::unique_ptr<NativeSessionStore> store;
        std::unique_ptr<TarnAPI> api;
    };
    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::optional<Config> m_config;
    std::list<Session> m_sessions;
};
