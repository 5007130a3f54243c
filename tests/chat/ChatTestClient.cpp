#include "chat/ChatTestClient.h"

#include "TarnWaitFor.h"

using namespace Qt::StringLiterals;

QString ChatTestClient::start()
{
    workspace = std::make_unique<TestWorkspace>();
    if (!workspace->isRunning())
        return workspace->error();
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), &error);
    if (!config)
        return error;
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    const QString token = workspace->signIn(u"maren@halvard.example"_s);
    if (token.isEmpty())
        return u"the owner could not sign in"_s;
    tarnWaitFor(store.save(token));
    api = std::make_unique<TarnAPI>(*config, store, settings.get());
    tarnWaitFor(api->refreshSession());
    return {};
}
