#include "workspace/routes/SignInRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/WorkspaceTokens.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

QString codeCallback(const QString &code)
{
    return WorkspaceReply::withQuery(u"pilo-tarn://auth"_s, { { u"code"_s, code } });
}

WorkspaceReply badChallenge()
{
    return WorkspaceReply::page(
        u"Sign-in cannot start"_s, u"<p>This sign-in address is incomplete. Start again from Pilo Tarn.</p>"_s, 400);
}

QString link(const QString &path, const QList<QPair<QString, QString>> &items)
{
    return WorkspaceReply::withQuery(path, items).toHtmlEscaped();
}

WorkspaceReply chooser(WorkspaceServer &server, const QString &challenge)
{
    QString items;
    for (const WorkspacePerson &person : server.store().people()) {
        items += u"<li><a href=\"%1\">%2</a> <span class=\"note\">%3 &middot; %4</span></li>\n"_s.arg(
            link(u"/api/mobile/start/choose"_s, { { u"challenge"_s, challenge }, { u"person"_s, person.id } }),
            person.name.toHtmlEscaped(), person.role.toHtmlEscaped(), person.email.toHtmlEscaped());
    }
    const QString content = u"<p>Choose an account to continue to Pilo Tarn.</p>\n<ul>\n"_s + items
        + u"</ul>\n<p><a href=\"%1\">Cancel</a></p>"_s.arg(
            link(u"/api/mobile/start/cancel"_s, { { u"challenge"_s, challenge } }));
    return WorkspaceReply::page(u"Sign in to Halvard & Co."_s, content);
}

WorkspaceReply exchange(WorkspaceServer &server, const WorkspaceRequest &request)
{
    const QString expired = u"Sign-in expired. Start again."_s;
    const std::optional<QJsonObject> body = request.jsonBody();
    if (!body)
        return WorkspaceReply::error(400, expired);

    const WorkspaceStore::Redemption redeemed
        = server.store().redeemSignInCode(body->value(u"code"_s).toString(), body->value(u"verifier"_s).toString());
    if (redeemed.result == WorkspaceStore::Redeemed::WrongVerifier)
        return WorkspaceReply::error(400, u"Sign-in could not be verified. Start again."_s);
    const std::optional<WorkspacePerson> person
        = redeemed.result == WorkspaceStore::Redeemed::Ok ? server.store().person(redeemed.personId) : std::nullopt;
    if (!person)
        return WorkspaceReply::error(400, expired);

    const WorkspaceStore::NewSession made = server.store().createSession(person->id);
    return WorkspaceReply::json(QJsonObject {
        { u"cookie"_s, QJsonObject { { u"name"_s, u"tarn_session"_s }, { u"value"_s, made.token } } },
        { u"user"_s, QJsonObject { { u"name"_s, person->name }, { u"email"_s, person->email } } },
    });
}

} // namespace

namespace SignInRoutes {

void add(WorkspaceServer &server)
{
    WorkspaceRouter &router = server.router();

    router.add("GET", u"/api/mobile/start"_s, Access::Public, [&server](const WorkspaceRequest &request) {
        const QString challenge = request.query(u"challenge"_s);
        if (!WorkspaceTokens::isChallenge(challenge))
            return badChallenge();
        if (!server.autoSignInPersonId().isEmpty()) {
            return WorkspaceReply::redirect(codeCallback(server.store().createSignInCode(
                server.autoSignInPersonId(), challenge, server.options().codeTtlSeconds)));
        }
        return chooser(server, challenge);
    });

    router.add("GET", u"/api/mobile/start/choose"_s, Access::Public, [&server](const WorkspaceRequest &request) {
        const QString challenge = request.query(u"challenge"_s);
        if (!WorkspaceTokens::isChallenge(challenge))
            return badChallenge();
        const std::optional<WorkspacePerson> person = server.store().person(request.query(u"person"_s));
        if (!person) {
            return WorkspaceReply::page(
                u"Sign-in cannot continue"_s, u"<p>That account is not part of this workspace.</p>"_s, 400);
        }
        return WorkspaceReply::redirect(
            codeCallback(server.store().createSignInCode(person->id, challenge, server.options().codeTtlSeconds)));
    });

    router.add("GET", u"/api/mobile/start/cancel"_s, Access::Public, [](const WorkspaceRequest &) {
        return WorkspaceReply::redirect(
            WorkspaceReply::withQuery(u"pilo-tarn://auth"_s, { { u"error"_s, u"Sign-in was cancelled."_s } }));
    });

    router.add("POST", u"/api/mobile/exchange"_s, Access::Public,
        [&server](const WorkspaceRequest &request) { return exchange(server, request); });
}

} // namespace SignInRoutes
