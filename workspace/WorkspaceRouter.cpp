#include "workspace/WorkspaceRouter.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceResponder.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QStringList segmentsOf(const QString &path)
{
    return path.split('/'_L1, Qt::KeepEmptyParts).mid(1);
}

} // namespace

void WorkspaceRouter::add(QByteArray method, const QString &pattern, Access access, Handler handler, qint64 bodyLimit)
{
    addHeld(
        std::move(method), pattern, access,
        [handler = std::move(handler)](
            const WorkspaceRequest &request, WorkspaceResponder &&responder) { responder.send(handler(request)); },
        bodyLimit);
}

void WorkspaceRouter::addHeld(
    QByteArray method, const QString &pattern, Access access, HeldHandler handler, qint64 bodyLimit)
{
    Q_ASSERT(pattern.startsWith('/'_L1));
    m_routes.append({ std::move(method), segmentsOf(pattern), access, std::move(handler), bodyLimit });
}

qint64 WorkspaceRouter::bodyLimit(QByteArrayView method, QByteArrayView path) const
{
    const std::optional<Match> found = match(method, QString::fromLatin1(path));
    return found ? found->route->bodyLimit : WorkspaceLimits::bodyBytes;
}

std::optional<WorkspaceRouter::Match> WorkspaceRouter::match(QByteArrayView method, const QString &path) const
{
    const QStringList segments = segmentsOf(path);
    const QByteArrayView wanted = method == "HEAD" ? QByteArrayView("GET") : method;
    for (const Route &route : m_routes) {
        if (route.method != wanted || route.segments.size() != segments.size())
            continue;
        QStringList arguments;
        bool matches = true;
        for (qsizetype i = 0; i < segments.size() && matches; ++i) {
            const QString &want = route.segments.at(i);
            const QString &have = segments.at(i);
            if (want.startsWith(':'_L1)) {
                matches = !have.isEmpty();
                arguments.append(QUrl::fromPercentEncoding(have.toUtf8()));
            } else {
                matches = want == have;
            }
        }
        if (matches)
            return Match { &route, arguments };
    }
    return std::nullopt;
}
