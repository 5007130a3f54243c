#pragma once

#include "TarnWaitFor.h"
#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"
#include "support/TestWorkspace.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

// The text of the error a call ends in, or an empty text when it succeeds.
template <typename T> QString errorOf(QCoro::Task<T> task)
{
    try {
        tarnWaitFor(std::move(task));
        return {};
    } catch (const TarnAPIError &error) {
        return error.text();
    }
}

// A real workspace and a service client signed in to it as one person, with
// the session loaded so that changes carry its CSRF token.
class MoneyTestSession {
public:
    // Empty when all went well; otherwise why it did not.
    [[nodiscard]] QString start(const QString &email)
    {
        workspace = std::make_unique<TestWorkspace>();
        if (!workspace->isRunning())
            return workspace->error();
        QString error;
        config = Config::fromOptions(workspace->url().toString(), workspace->certificatePath(), &error);
        if (!config)
            return error;
        settings
            = std::make_unique<QSettings>(settingsFolder.filePath(QStringLiteral("prefs.ini")), QSettings::IniFormat);
        return signInAs(email);
    }

    [[nodiscard]] QString signInAs(const QString &email)
    {
        token = workspace->signIn(email);
        if (token.isEmpty())
            return QStringLiteral("could not sign in");
        tarnWaitFor(store.save(token));
        api = std::make_unique<TarnAPI>(*config, store, settings.get());
        csrf = tarnWaitFor(api->refreshSession()).csrf;
        return {};
    }

    // A request the client has no call for, sent as the signed-in person.
    [[nodiscard]] TestWorkspace::Answer send(const QByteArray &method, const QString &path, const QJsonObject &body)
    {
        return workspace->send(method, path, token, body, { { "X-CSRF-Token", csrf.toUtf8() } });
    }

    std::unique_ptr<TestWorkspace> workspace;
    std::unique_ptr<TarnAPI> api;
    QString token;
    QString csrf;

private:
    NativeSessionStore store { QStringLiteral("co.halvard.pilo-tarn.session.test") };
    QTemporaryDir settingsFolder;
    std::unique_ptr<QSettings> settings;
    std::optional<Config> config;
};
