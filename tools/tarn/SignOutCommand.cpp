#include "SignOutCommand.h"

#include "WorkspaceOptions.h"
#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"

#include "TarnWaitFor.h"
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<> signOut(TarnAPI &api)
{
    try {
        co_await api.refreshSession(); // for the CSRF token the logout needs
    } catch (const TarnAPIError &error) {
        if (error.kind() == TarnAPIError::Kind::signedOut)
            co_return; // nothing left to end; the token is already gone
    }
    co_await api.logout();
}

} // namespace

int runSignOut(const QStringList &args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Signs this computer out of Pilo Tarn."_s);
    const WorkspaceOptions workspace(parser);
    parser.process(QStringList { u"tarn sign-out"_s } + args);
    const std::optional<Config> config = workspace.config(parser);
    if (!config)
        return 2;

    NativeSessionStore store;
    TarnAPI api(*config, store, nullptr);
    try {
        tarnWaitFor(signOut(api));
        QTextStream(stdout) << "Signed out.\n";
        return 0;
    } catch (const std::exception &error) {
        QTextStream(stderr) << QString::fromUtf8(error.what()) << '\n';
        return 1;
    }
}
