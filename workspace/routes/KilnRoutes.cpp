#include "workspace/routes/KilnRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BooksSql.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;
using BooksSql::nowMs;
using BooksSql::run;
using BooksSql::text;

namespace {

constexpr qint64 codeLifeMs = 60'000;

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS kiln_codes ("
    " code_hash TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), expires_at INTEGER NOT NULL,"
    " used_at INTEGER)",
};

QString hashOf(const QString &code)
{
    return QString::fromLatin1(QCryptographicHash::hash(code.toUtf8(), QCryptographicHash::Sha256).toHex());
}

QString newCode()
{
    QByteArray bytes(24, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
    return QString::fromLatin1(bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

WorkspaceReply handOff(WorkspaceServer &server, const WorkspaceRequest &request)
{
    const QString &me = request.session().personId;
    if (!server.store().opens(me, u"Kiln"_s))
        return WorkspaceReply::error(403, u"The web workspace is not open to you."_s);
    const QString code = newCode();
    const qint64 expires = nowMs() + codeLifeMs;
    run(server.store().database(), u"INSERT INTO kiln_codes (code_hash, person_id, expires_at) VALUES (?, ?, ?)"_s,
        { hashOf(code), me, expires });
    // The page is on the host the client asked, which is the service's own.
    const QString host = QString::fromLatin1(request.header("Host").value_or(QByteArray()));
    return WorkspaceReply::json(QJsonObject { { u"code"_s, code },
        { u"url"_s, WorkspaceReply::withQuery(u"https://%1/kiln"_s.arg(host), { { u"code"_s, code } }) },
        { u"expires_at"_s, isoTime(expires) } });
}

WorkspaceReply page(WorkspaceServer &server, const WorkspaceRequest &request)
{
    const QSqlDatabase db = server.store().database();
    const QString hash = hashOf(request.query(u"code"_s));
    const QString person
        = text(db, u"SELECT person_id FROM kiln_codes WHERE code_hash = ? AND used_at IS NULL AND expires_at > ?"_s,
            { hash, nowMs() });
    if (person.isEmpty())
        return WorkspaceReply::page(u"Kiln"_s,
            u"<h1>This hand-off has been used or has expired.</h1><p>Open Kiln from the app again.</p>"_s, 403);
    run(db, u"UPDATE kiln_codes SET used_at = ? WHERE code_hash = ?"_s, { nowMs(), hash });
    const std::optional<WorkspacePerson> who = server.store().person(person);
    const QString name = who ? who->name.toHtmlEscaped() : QString();
    return WorkspaceReply::page(u"Kiln"_s,
        u"<p>Signed in as %1.</p>"
        "<h2>Projects</h2><ul><li>Fernhill Bakery: menu pages and ordering</li>"
        "<li>Oakline Studio: portfolio relaunch</li><li>Marlow &amp; Sons: quote request flow</li></ul>"
        "<p><a href=\"https://docs.halvard.example/kiln\">Kiln's guide</a> opens in your browser.</p>"_s.arg(name));
}

} // namespace

namespace KilnRoutes {

void add(WorkspaceServer &server)
{
    if (!BooksSql::runAll(server.store().database(), schema))
        return;
    WorkspaceRouter &router = server.router();
    router.add("POST", u"/api/kiln/handoff"_s, WorkspaceRouter::Access::Session,
        [&server](const WorkspaceRequest &request) { return handOff(server, request); });
    router.add("GET", u"/kiln"_s, WorkspaceRouter::Access::Public,
        [&server](const WorkspaceRequest &request) { return page(server, request); });
}

} // namespace KilnRoutes
