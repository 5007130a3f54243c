#pragma once

#include "service/TarnAPI.h"
#include "tarn/MemorySessionStore.h"

#include <memory>

class TestWorkspace;

// One signed-in person of a test workspace, the token held in memory and
// the session (with its CSRF token) loaded.
struct AgentTestPerson {
    std::unique_ptr<MemorySessionStore> store;
    std::unique_ptr<TarnAPI> api;

    [[nodiscard]] static AgentTestPerson signIn(TestWorkspace &workspace, const QString &email);
};
