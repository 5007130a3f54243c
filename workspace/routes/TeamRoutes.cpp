#include "workspace/routes/TeamRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;
using Appearance = WorkspaceStore::Appearance;

constexpr qsizetype longestChoice = 40;

struct Setting {
    QString path;
    QString key;
    QString label;
    Appearance column;
};

WorkspaceReply save(WorkspaceServer &server, const WorkspaceRequest &request, const Setting &setting)
{
    const std::optional<QJsonObject> body = request.jsonBody();
    const QJsonValue value = body ? body->value(setting.key) : QJsonValue();
    if (!value.isString())
        return WorkspaceReply::error(400, u"Choose a %1."_s.arg(setting.label));
    const QString choice = value.toString().trimmed();
    if (choice.isEmpty())
        return WorkspaceReply::error(400, u"Choose a %1."_s.arg(setting.label));
    if (choice.size() > longestChoice)
        return WorkspaceReply::error(400, u"That %1 is not one Pilo Tarn offers."_s.arg(setting.label));
    server.store().setAppearance(request.session().personId, setting.column, choice);
    return WorkspaceReply::ok();
}

} // namespace

namespace TeamRoutes {

void add(WorkspaceServer &server)
{
    WorkspaceRouter &router = server.router();

    router.add("DELETE", u"/api/team/me/sessions"_s, Access::Session, [&server](const WorkspaceRequest &request) {
        const int ended = server.store().endOtherSessions(request.session().personId, request.session().id);
        return WorkspaceReply::json(QJsonObject { { u"ok"_s, true }, { u"signed_out"_s, ended } });
    });

    const Setting settings[] = {
        { u"/api/team/me/accent"_s, u"accent"_s, u"accent"_s, Appearance::Accent },
        { u"/api/team/me/text-size"_s, u"text_size"_s, u"text size"_s, Appearance::TextSize },
        { u"/api/team/me/appearance"_s, u"background"_s, u"background"_s, Appearance::Background },
    };
    for (const Setting &setting : settings) {
        router.add("PATCH", setting.path, Access::Session,
            [&server, setting](const WorkspaceRequest &request) { return save(server, request, setting); });
    }
}

} // namespace TeamRoutes
