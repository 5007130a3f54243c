#include "chat/huddle/HuddleTestTeam.h"

#include "TarnWaitFor.h"
#include "chat/TarnChatCalls.h"

using namespace Qt::StringLiterals;

QString HuddleTestTeam::start(const QStringList &people, const QStringList &workspaceArgs)
{
    workspace = std::make_unique<TestWorkspace>(workspaceArgs);
    if (!workspace->isRunning())
        return workspace->error();
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), &error);
    if (!config)
        return error;
    for (const QString &email : people) {
        const QString token = workspace->signIn(email);
        if (token.isEmpty())
            return email + u" could not sign in"_s;
        Member member;
        member.store = std::make_unique<NativeSessionStore>(u"co.halvard.pilo-tarn.huddle-test."_s + email);
        member.settings = std::make_unique<QSettings>(folder.filePath(email + u".ini"_s), QSettings::IniFormat);
        tarnWaitFor(member.store->save(token));
        member.api = std::make_unique<TarnAPI>(*config, *member.store, member.settings.get());
        tarnWaitFor(member.api->refreshSession());
        member.id = workspace->session(token).value("id"_L1).toString();
        members.push_back(std::move(member));
    }
    return {};
}

QString HuddleTestTeam::roomNamed(const QString &name)
{
    for (const TarnRoom &room : tarnWaitFor(TarnChatCalls::rooms(*members.front().api))) {
        if (room.name == name)
            return room.id;
    }
    return {};
}
