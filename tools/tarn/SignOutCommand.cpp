#include "SignOutCommand.h"

#include "CommandLine.h"
#include "TarnWaitFor.h"
#include "WorkspaceOptions.h"
#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

enum class Outcome {
    nothingStored,
    alreadyEnded, // the service no longer knew the session; the token is gone
    ended,
};

QCoro::Task<Outcome> signOut(TarnAPI &api)
{
    const std::optional<QString> token = co_await api.sessionStore().token();
    if (!token)
        co_return Outcome::nothingStored;
    try {
        co_await api.refreshSession(); // for the CSRF token the logout needs
    } catch (const TarnAPIError &error) {
        if (error.kind() == TarnAPIError::Kind::signedOut)
            co_return Outcome::alreadyEnded;
    }
    co_await api.logout();
    co_return Outcome::ended;
}

} // namespace

int runSignOut(CommandLine &line)
{
    line.parser().setApplicationDescription(u"Signs this computer out of Pilo Tarn, as the app's Sign Out does: "
                                            u"the workspace ends the session and the keyring forgets it, even "
                                            u"when the workspace cannot be reached."_s);
    const std::variant<Config, int> parsed = WorkspaceOptions::parseAlone(line);
    if (const int *done = std::get_if<int>(&parsed))
        return *done;
    const Config &config = std::get<Config>(parsed);

    NativeSessionStore store;
    TarnAPI api(config, store, nullptr);
    QTextStream out(stdout);
    try {
        switch (tarnWaitFor(signOut(api))) {
        case Outcome::nothingStored:
            out << "No session was stored on this computer; nothing to remove.\n";
            break;
        case Outcome::alreadyEnded:
            out << "The stored session had already ended; it was removed from this computer.\n";
            break;
        case Outcome::ended:
            out << "Signed out: the session was ended and removed from this computer.\n";
            break;
        }
        return 0;
    } catch (const std::exception &failure) {
        return line.refused(u"the session was removed from this computer, but the workspace was not told: "_s
            + CommandLine::continuing(QString::fromUtf8(failure.what())));
    }
}
