#pragma once

#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"
#include "support/TestWorkspace.h"

#include <QSettings>
#include <QTemporaryDir>

#include <memory>

// A real workspace with the demo owner signed in, the token in the test
// keyring and the service client on that session.
struct ChatTestClient {
    // Why it could not start; empty when it did.
    [[nodiscard]] QString start();

    std::unique_ptr<TestWorkspace> workspace;
    NativeSessionStore store { QStringLiteral("co.halvard.pilo-tarn.session.test") };
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<TarnAPI> api;
};
