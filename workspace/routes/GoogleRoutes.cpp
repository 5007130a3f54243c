#include "workspace/routes/GoogleRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

constexpr qsizetype longestService = 40;

QString connectedCallback(const QList<QPair<QString, QString>> &items)
{
    return WorkspaceReply::withQuery(u"pilo-tarn://google-connected"_s, items);
}

} // namespace

namespace GoogleRoutes {

void add(WorkspaceServer &server)
{
    WorkspaceRouter &router = server.router();

    router.add("POST", u"/api/native/google/start"_s, Access::Session, [&server](const WorkspaceRequest &request) {
        const std::optional<QJsonObject> body = request.jsonBody();
        const QString service = body ? body->value(u"service"_s).toString().trimmed() : QString();
        if (service.isEmpty() || service.size() > longestService)
            return WorkspaceReply::error(400, u"Choose a Google service to connect."_s);
        const QString state = server.store().createGoogleState(request.session().personId, service);
        const QString start = server.url().resolved(QUrl(u"/api/native/google/start"_s)).toString();
        return WorkspaceReply::json(QJsonObject {
            { u"url"_s, WorkspaceReply::withQuery(start, { { u"service"_s, service }, { u"state"_s, state } }) } });
    });

    // The browser's page: it asks before connecting, as Google's consent does.
    router.add("GET", u"/api/native/google/start"_s, Access::Public, [](const WorkspaceRequest &request) {
        const QString service = request.query(u"service"_s);
        const QString state = request.query(u"state"_s);
        const QString connect = WorkspaceReply::withQuery(
            u"/api/native/google/start/connect"_s, { { u"service"_s, service }, { u"state"_s, state } });
        const QString content
            = u"<p>Pilo Tarn asks to use your Google account for <b>%1</b>.</p>\n"
              u"<p><a href=\"%2\">Connect</a> &nbsp; <a href=\"%3\">Cancel</a></p>"_s.arg(service.toHtmlEscaped(),
                  connect.toHtmlEscaped(),
                  connectedCallback({ { u"error"_s, u"Google connection was cancelled."_s } }).toHtmlEscaped());
        return WorkspaceReply::page(u"Connect Google"_s, content);
    });

    router.add(
        "GET", u"/api/native/google/start/connect"_s, Access::Public, [&server](const WorkspaceRequest &request) {
            const QString service = request.query(u"service"_s);
            if (!server.store().connectGoogle(request.query(u"state"_s), service)) {
                return WorkspaceReply::redirect(
                    connectedCallback({ { u"error"_s, u"Google connection expired. Start again."_s } }));
            }
            return WorkspaceReply::redirect(connectedCallback({ { u"service"_s, service } }));
        });
}

} // namespace GoogleRoutes
