#include "workspace/WorkspaceGif.h"
#include "workspace/WorkspaceOptions.h"
#include "workspace/WorkspaceServer.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

int signalPipe[2] = { -1, -1 };

void onSignal(int)
{
    const char byte = 1;
    // Only write() is safe here; the event loop does the rest.
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[0], &byte, 1);
}

// SIGTERM and SIGINT end the event loop, so the database is closed cleanly.
void quitOnSignals(QCoreApplication &app)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

// A test harness that dies without stopping us closes our standard input;
// leaving then keeps crashed test runs from leaving servers behind.
void quitWhenStdinCloses(QCoreApplication &app)
{
    auto *notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [&app, notifier] {
        char buffer[256];
        const ssize_t got = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (got <= 0) {
            notifier->setEnabled(false);
            app.quit();
        }
    });
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"tarn-workspace"_s);

    QTextStream err(stderr);
    QString error;
    const std::optional<WorkspaceOptions> options = WorkspaceOptions::parse(app.arguments().mid(1), &error);
    if (!options) {
        err << "tarn-workspace: " << error << "\n"
            << "usage: tarn-workspace [--data DIR] [--port N] [--auto-sign-in EMAIL|owner] [--agent "
               "online|offline|off] [--gif-folder DIR] [--test-faults]\n"
            << "       tarn-workspace --write-demo-gifs DIR\n";
        return 2;
    }
    if (!options->writeDemoGifs.isEmpty()) {
        error = WorkspaceGif::writeDemo(options->writeDemoGifs);
        if (!error.isEmpty())
            err << "tarn-workspace: " << error << "\n";
        return error.isEmpty() ? 0 : 1;
    }

    WorkspaceServer server(*options);
    if (!server.start(&error)) {
        err << "tarn-workspace: " << error << "\n";
        return 1;
    }

    // Scripts wait for exactly these two lines.
    QTextStream out(stdout);
    out << "url: " << server.url().toString() << "\n"
        << "certificate: " << server.certificatePath() << "\n";
    out.flush();

    quitOnSignals(app);
    if (options->stopWithStdin)
        quitWhenStdinCloses(app);
    return app.exec();
}
