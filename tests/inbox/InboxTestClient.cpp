#include "inbox/InboxTestClient.h"

#include "TarnWaitFor.h"

using namespace Qt::StringLiterals;

QString InboxTestClient::start()
{
    workspace = std::make_unique<TestWorkspace>();
    return workspace->isRunning() ? QString() : workspace->error();
}

TarnAPI &InboxTestClient::as(const QString &email)
{
    Person &person = m_people[email];
    if (!person.api) {
        const std::optional<Config> config
            = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), nullptr);
        person.store = std::make_unique<NativeSessionStore>(
            u"co.halvard.pilo-tarn.inbox.test.%1.%2"_s.arg(workspace->url().port()).arg(email));
        person.settings = std::make_unique<QSettings>(m_folder.filePath(email + u".ini"_s), QSettings::IniFormat);
        tarnWaitFor(person.store->save(workspace->signIn(email)));
        person.api = std::make_unique<TarnAPI>(*config, *person.store, person.settings.get());
        tarnWaitFor(person.api->refreshSession());
    }
    return *person.api;
}
