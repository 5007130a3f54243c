#include "mail/MailTestClient.h"

#include "TarnWaitFor.h"

using namespace Qt::StringLiterals;

QString MailTestClient::start()
{
    workspace = std::make_unique<TestWorkspace>();
    if (!workspace->isRunning())
        return workspace->error();
    QString error;
    m_config = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), &error);
    if (!m_config)
        return error;
    m_settings = std::make_unique<QSettings>(m_folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    return {};
}

TarnAPI *MailTestClient::signIn(const QString &email)
{
    const QString token = workspace->signIn(email);
    if (token.isEmpty() || !m_config)
        return nullptr;
    Session &session = m_sessions.emplace_back();
    session.store = std::make_unique<NativeSessionStore>(u"co.halvard.pilo-tarn.mail-test."_s + email);
    tarnWaitFor(session.store->save(token));
    session.api = std::make_unique<TarnAPI>(*m_config, *session.store, m_settings.get());
    tarnWaitFor(session.api->refreshSession());
    return session.api.get();
}
