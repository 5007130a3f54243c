#include "SignInCommand.h"

#include "CommandLine.h"
#include "TarnWaitFor.h"
#include "TerminalInput.h"
#include "WorkspaceOptions.h"
#include "auth/NativeAuth.h"
#include "auth/NativeBrowser.h"
#include "auth/NativeSessionStore.h"
#include "auth/NativeSingleInstance.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

int runSignIn(CommandLine &line)
{
    line.parser().setApplicationDescription(
        u"Signs this computer in to Pilo Tarn, as the app's \"Sign in with Google\" does, and stores the session in "
        u"the keyring, where the app and the other commands find it. The browser opens the workspace's sign-in "
        u"page; the pilo-tarn:// address it ends on comes back here through the desktop (unless Pilo Tarn is "
        u"running, which then receives it), or paste it into the terminal."_s);
    const std::variant<Config, int> parsed = WorkspaceOptions::parseAlone(line);
    if (const int *done = std::get_if<int>(&parsed))
        return *done;
    const Config &config = std::get<Config>(parsed);

    // The browser hands its address to "pilo-tarn ADDRESS", which passes it
    // to whoever holds the app's single-instance name: this command, unless
    // the app already runs.
    NativeSingleInstance receiver(u"pilo-tarn"_s);
    const bool receiving = receiver.claim();
    const QString waiting = receiving
        ? u"Waiting for the browser to hand the address back (or paste the pilo-tarn:// address here).\n"_s
        : u"Pilo Tarn is running, so it, not tarn, receives the address the browser hands back.\n"
          "Paste the pilo-tarn:// address here, or quit Pilo Tarn and run tarn sign-in again.\n"_s;

    QTextStream out(stdout);
    // The terminal is the browser of last resort: the address is always
    // shown, so the sign-in can go on in any browser when none starts here.
    const NativeAuth::Browser browser = [&out, &waiting](const QUrl &address) {
        out << "Opening the sign-in page in your browser:\n  " << address.toString(QUrl::FullyEncoded) << '\n';
        if (!NativeBrowser::open(address))
            out << "No browser could be started here: open the address above in one.\n";
        out << waiting << Qt::flush;
        return true;
    };
    NativeSessionStore store;
    NativeAuth auth(config, store, browser);
    QObject::connect(&receiver, &NativeSingleInstance::activated, &auth, [&out, &auth](const QUrl &url) {
        if (url.isEmpty())
            out << "Pilo Tarn was opened while tarn waits for sign-in: open it again once this ends.\n" << Qt::flush;
        else
            auth.deliver(url);
    });

    TerminalInput input;
    QObject::connect(&input, &TerminalInput::lineRead, &auth, [&line, &auth](const QString &text) {
        if (text.isEmpty())
            return;
        const QUrl url(text, QUrl::StrictMode);
        if (!url.isValid() || url.scheme() != QLatin1StringView(NativeAuth::callbackScheme))
            line.refused(u"paste the whole address that starts with pilo-tarn://"_s);
        else
            auth.deliver(url);
    });
    // With nothing left to read and no hand-off to wait for, no address can come.
    QObject::connect(&input, &TerminalInput::ended, &auth, [receiving, &auth] {
        if (!receiving)
            auth.cancel();
    });

    try {
        const QString name = tarnWaitFor(auth.signIn());
        out << "Signed in as " << name << ".\n";
        return 0;
    } catch (const std::exception &failure) {
        return line.refused(QString::fromUtf8(failure.what()));
    }
}
