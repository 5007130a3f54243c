#pragma once

#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"
#include "support/TestWorkspace.h"

#include <QSettings>
#include <QTemporaryDir>

#include <map>
#include <memory>

// A real workspace and a service client per demo person, each with its
// token in the test keyring under a name of its own.
class InboxTestClient {
public:
    // Why it could not start; empty when it did.
    [[nodiscard]] QString start();
    // The client of the person with this address, signed in on first use.
    [[nodiscard]] TarnAPI &as(const QString &email);

    std::unique_ptr<TestWorkspace> workspace;

private:
    struct Person {
        std::unique_ptr<NativeSessionStore> store;
        std::unique_ptr<QSettings> settings;
        std::unique_ptr<TarnAPI> api;
    };
    QTemporaryDir m_folder;
    std::map<QString, Person> m_people;
};
