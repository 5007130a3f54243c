#pragma once

#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"
#include "support/TestWorkspace.h"

#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

// A real workspace with several demo people signed in at once, each with
// their own keyring entry and service client, as separate app windows are.
struct HuddleTestTeam {
    struct Member {
        QString id;
        std::unique_ptr<NativeSessionStore> store;
        std::unique_ptr<QSettings> settings;
        std::unique_ptr<TarnAPI> api;
    };

    // Why it could not start; empty when it did. `people` are demo emails.
    [[nodiscard]] QString start(const QStringList &people, const QStringList &workspaceArgs = {});
    // The id of the room the owner sees under this name.
    [[nodiscard]] QString roomNamed(const QString &name);

    std::unique_ptr<TestWorkspace> workspace;
    QTemporaryDir folder;
    std::vector<Member> members;
};
