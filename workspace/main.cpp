#include "workspace/WorkspaceOptions.h"
#include "workspace/WorkspaceServer.h"

#include <QCoreApplication>
#include <QTextStream>

#include <csignal>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"tarn-workspace"_s);

    QTextStream err(stderr);
    QString error;
    const std::optional<WorkspaceOptions> options = WorkspaceOptions::parse(app.arguments().mid(1), &error);
    if (!options) {
        err << "tarn-workspace: " << error << "\n"
            << "usage: tarn-workspace [--data DIR] [--port N] [--auto-sign-in EMAIL|owner] [--test-faults]\n";
        return 2;
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

    // SIGTERM and SIGINT end the event loop so the database closes cleanly.
    std::signal(SIGTERM, [](int) { QCoreApplication::quit(); });
    std::signal(SIGINT, [](int) { QCoreApplication::quit(); });
    return app.exec();
}
