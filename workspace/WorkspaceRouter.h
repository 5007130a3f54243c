#pragma once

#include "workspace/WorkspaceLimits.h"
#include "workspace/WorkspaceReply.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class WorkspaceRequest;
class WorkspaceResponder;

// The table of endpoints. A pattern is a path whose ":name" segments match any
// one segment ("/api/rooms/:room/messages"); the captured segments reach the
// handler as WorkspaceRequest::arguments(). Routes that need a session get it
// checked (and the CSRF token, for non-GET/HEAD methods) before they run.
// HEAD runs the GET route (the body is left out of the answer). Each route
// takes a body up to its limit; a larger one is refused before it is read.
class WorkspaceRouter {
public:
    enum class Access { Public, Session };

    // Most endpoints answer at once.
    using Handler = std::function<WorkspaceReply(const WorkspaceRequest &)>;
    // Long polls and the like keep the responder and answer later.
    using HeldHandler = std::function<void(const WorkspaceRequest &, WorkspaceResponder &&)>;

    struct Route {
        QByteArray method;
        QStringList segments;
        Access access = Access::Public;
        HeldHandler run;
        qint64 bodyLimit = WorkspaceLimits::bodyBytes;
    };

    struct Match {
        const Route *route = nullptr;
        QStringList arguments;
    };

    void add(QByteArray method, const QString &pattern, Access access, Handler handler,
        qint64 bodyLimit = WorkspaceLimits::bodyBytes);
    void addHeld(QByteArray method, const QString &pattern, Access access, HeldHandler handler,
        qint64 bodyLimit = WorkspaceLimits::bodyBytes);

    // The route for this method and (percent-encoded) path, if any.
    [[nodiscard]] std::optional<Match> match(QByteArrayView method, const QString &path) const;
    // The largest body the route takes; the JSON limit where no route matches.
    [[nodiscard]] qint64 bodyLimit(QByteArrayView method, QByteArrayView path) const;

private:
    QList<Route> m_routes;
};
