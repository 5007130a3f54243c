#include "workspace/WorkspaceOptions.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString WorkspaceOptions::defaultDataDir()
{
    // GenericDataLocation is XDG_DATA_HOME (or ~/.local/share); AppDataLocation
    // would add organisation and application names we do not want here.
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/pilo-tarn-workspace"_L1;
}

std::optional<WorkspaceOptions> WorkspaceOptions::parse(const QStringList &arguments, QString *error)
{
    WorkspaceOptions options;
    options.dataDir = defaultDataDir();

    const auto fail = [error](const QString &message) -> std::optional<WorkspaceOptions> {
        if (error)
            *error = message;
        return std::nullopt;
    };

    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &arg = arguments.at(i);
        const QStringList counts = { u"--code-ttl"_s, u"--idle-timeout-ms"_s, u"--request-timeout-ms"_s,
            u"--max-connections"_s, u"--huddle-drop-seconds"_s };
        const QStringList folders = { u"--gif-folder"_s, u"--write-demo-gifs"_s };
        const bool takesValue = arg == "--data"_L1 || arg == "--port"_L1 || arg == "--auto-sign-in"_L1
            || arg == "--agent"_L1 || arg == "--ice-server"_L1 || counts.contains(arg) || folders.contains(arg);
        if (arg == "--test-faults"_L1) {
            options.testFaults = true;
            continue;
        }
        if (arg == "--stop-with-stdin"_L1) {
            options.stopWithStdin = true;
            continue;
        }
        if (!takesValue)
            return fail(u"unknown option: %1"_s.arg(arg));
        if (i + 1 >= arguments.size())
            return fail(u"%1 needs a value"_s.arg(arg));
        const QString value = arguments.at(++i);

        if (arg == "--data"_L1) {
            if (value.isEmpty())
                return fail(u"--data needs a folder"_s);
            options.dataDir = QDir(value).absolutePath();
        } else if (folders.contains(arg)) {
            if (value.isEmpty())
                return fail(u"%1 needs a folder"_s.arg(arg));
            (arg == folders.first() ? options.gifFolder : options.writeDemoGifs) = QDir(value).absolutePath();
        } else if (arg == "--port"_L1) {
            bool ok = false;
            const uint port = value.toUInt(&ok);
            if (!ok || port > 65535)
                return fail(u"--port needs a number from 0 to 65535"_s);
            options.port = static_cast<quint16>(port);
        } else if (arg == "--auto-sign-in"_L1) {
            if (value.isEmpty())
                return fail(u"--auto-sign-in needs an email address or \"owner\""_s);
            options.autoSignIn = value;
        } else if (arg == "--agent"_L1) {
            const QStringList modes = { u"online"_s, u"offline"_s, u"off"_s };
            if (!modes.contains(value))
                return fail(u"--agent needs online, offline or off"_s);
            options.agent = static_cast<Agent>(modes.indexOf(value));
        } else if (arg == "--ice-server"_L1) {
            if (value.isEmpty())
                return fail(u"--ice-server needs a stun: or turn: address"_s);
            options.iceServers.append(value);
        } else {
            bool ok = false;
            const int count = value.toInt(&ok);
            if (!ok || count < 0 || (count == 0 && arg != "--code-ttl"_L1))
                return fail(u"%1 needs a positive number"_s.arg(arg));
            int *const target[] = { &options.codeTtlSeconds, &options.idleTimeoutMs, &options.requestTimeoutMs,
                &options.maxConnections, &options.huddleDropSeconds };
            *target[counts.indexOf(arg)] = count;
        }
    }
    return options;
}
