#include "assistant/AgentTestPerson.h"

#include "TarnWaitFor.h"
#include "support/TestWorkspace.h"

AgentTestPerson AgentTestPerson::signIn(TestWorkspace &workspace, const QString &email)
{
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace.url().toString(), workspace.certificatePath(), &error);
    AgentTestPerson person { std::make_unique<MemorySessionStore>(workspace.signIn(email)), nullptr };
    if (config) {
        person.api = std::make_unique<TarnAPI>(*config, *person.store, nullptr);
        tarnWaitFor(person.api->refreshSession());
    }
    return person;
}
