#pragma once

#include "workspace/WorkspaceLimits.h"

#include <QString>
#include <QStringList>

#include <optional>

// How tarn-workspace was started. Parsed once in main and handed to the server.
struct WorkspaceOptions {
    QString dataDir;
    quint16 port = 0;
    // An email address, or "owner" for the demo company's owner; empty when off.
    QString autoSignIn;
    bool testFaults = false;
    // Sign-in codes live this long; tests shorten it to see expiry without waiting.
    int codeTtlSeconds = 120;
    // Tests shorten the connection timeouts and lower the connection cap
    // (0: WorkspaceLimits::connections, kept under the descriptor limit).
    int idleTimeoutMs = WorkspaceLimits::idleTimeoutMs;
    int requestTimeoutMs = WorkspaceLimits::requestTimeoutMs;
    int maxConnections = 0;
    // The assistant's agent: set up and connected, set up but away, or not set up.
    enum class Agent { Online, Offline, Off };
    Agent agent = Agent::Online;
    // The ICE servers huddles are told to use ("--ice-server URL", repeated).
    QStringList iceServers;
    // A huddle member who has not polled for this long is taken out.
    int huddleDropSeconds = 45;
    // A folder of .gif files served by the GIF search; empty: no GIFs.
    QString gifFolder;
    // Write the demo's GIFs into this folder and exit.
    QString writeDemoGifs;
    // Exit when standard input reaches its end (test harnesses keep it open).
    bool stopWithStdin = false;

    // Reads the arguments (without the program name). On a bad option returns
    // nothing and fills *error with a line for standard error.
    [[nodiscard]] static std::optional<WorkspaceOptions> parse(const QStringList &arguments, QString *error);
    [[nodiscard]] static QString defaultDataDir();
};
