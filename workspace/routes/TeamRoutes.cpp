#include "workspace/routes/TeamRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"

#include "shell/TarnAppearance.h"

#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;
using Appearance = WorkspaceStore::Appearance;

struct Setting {
    QString path;
    QString key;
    // "an accent": the label with its article.
    QString named;
    QString label;
    Appearance column;
    // The app's own list is the one list of what may be stored.
    const QList<TarnAppearanceChoice> &choices;
};

WorkspaceReply save(WorkspaceServer &server, const WorkspaceRequest &request, const Setting &setting)
{
    const std::optional<QJsonObject> body = request.jsonBody();
    const QJsonValue value = body ? body->value(setting.key) : QJsonValue();
    const QString choice = value.toString();
    if (choice.isEmpty())
        return WorkspaceReply::error(400, u"Choose %1."_s.arg(setting.named));
    const bool offered = std::any_of(setting.choices.begin(), setting.choices.end(),
        [&choice](const TarnAppearanceChoice &offer) { return offer.value == choice; });
    if (!offered)
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
        { u"/api/team/me/accent"_s, u"accent"_s, u"an accent"_s, u"accent"_s, Appearance::Accent,
            TarnAppearance::accents() },
        { u"/api/team/me/text-size"_s, u"text_size"_s, u"a text size"_s, u"text size"_s, Appearance::TextSize,
            TarnAppearance::textSizes() },
        { u"/api/team/me/appearance"_s, u"background"_s, u"a background"_s, u"background"_s, Appearance::Background,
            TarnAppearance::backgrounds() },
    };
    for (const Setting &setting : settings) {
        router.add("PATCH", setting.path, Access::Session,
            [&server, setting](const WorkspaceRequest &request) { return save(server, request, setting); });
    }
}

} // namespace TeamRoutes
