#include "workspace/routes/SigningLinks.h"

#include "workspace/WorkspaceTokens.h"
#include "workspace/routes/BooksSql.h"

#include <QMessageAuthenticationCode>
#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::orNull;
using BooksSql::run;

namespace {

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS documents_secrets (name TEXT PRIMARY KEY, value BLOB NOT NULL)",
    // Times in milliseconds; a link is live while neither used nor superseded.
    "CREATE TABLE IF NOT EXISTS documents_links ("
    " id TEXT PRIMARY KEY, token_hash TEXT NOT NULL UNIQUE,"
    " envelope_id TEXT NOT NULL REFERENCES documents_envelopes(id), position INTEGER NOT NULL,"
    " made_at INTEGER NOT NULL, expires_at INTEGER NOT NULL, used_at INTEGER, superseded_at INTEGER)",
    "CREATE INDEX IF NOT EXISTS documents_links_signer ON documents_links (envelope_id, position)",
    // `address` is where the answer came from; `typed_name` the signature.
    "CREATE TABLE IF NOT EXISTS documents_answers ("
    " envelope_id TEXT NOT NULL REFERENCES documents_envelopes(id), position INTEGER NOT NULL,"
    " outcome TEXT NOT NULL, answered_at INTEGER NOT NULL, typed_name TEXT, address TEXT NOT NULL, reason TEXT,"
    " PRIMARY KEY (envelope_id, position))",
};

} // namespace

SigningLinks::SigningLinks(QSqlDatabase db)
    : m_db(std::move(db))
{
    if (!BooksSql::runAll(m_db, schema))
        return;
    QSqlQuery q = run(m_db, u"SELECT value FROM documents_secrets WHERE name = 'links'"_s);
    if (q.next()) {
        m_key = q.value(0).toByteArray();
        return;
    }
    m_key = WorkspaceTokens::random(32).toLatin1();
    run(m_db, u"INSERT INTO documents_secrets (name, value) VALUES ('links', ?)"_s, { m_key });
}

QString SigningLinks::tokenOf(const QString &linkId) const
{
    return QString::fromLatin1(QMessageAuthenticationCode::hash(linkId.toUtf8(), m_key, QCryptographicHash::Sha256)
                                   .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

SigningLinks::Found SigningLinks::find(const QString &token) const
{
    if (token.isEmpty())
        return {};
    QSqlQuery q = run(m_db,
        u"SELECT envelope_id, position, expires_at, used_at, superseded_at FROM documents_links"
        " WHERE token_hash = ?"_s,
        { WorkspaceTokens::hash(token) });
    if (!q.next())
        return {};
    Found found { State::Open, q.value(0).toString(), q.value(1).toInt() };
    if (!q.value(3).isNull())
        found.state = State::Used;
    else if (!q.value(4).isNull())
        found.state = State::Superseded;
    else if (q.value(2).toLongLong() <= BooksSql::nowMs())
        found.state = State::Expired;
    return found;
}

std::optional<SigningLinks::Link> SigningLinks::live(const QString &envelopeId, int position) const
{
    QSqlQuery q = run(m_db,
        u"SELECT id, expires_at FROM documents_links WHERE envelope_id = ? AND position = ?"
        " AND used_at IS NULL AND superseded_at IS NULL"_s,
        { envelopeId, position });
    if (!q.next())
        return std::nullopt;
    return Link { tokenOf(q.value(0).toString()), q.value(1).toLongLong() };
}

bool SigningLinks::hasLink(const QString &envelopeId, int position) const
{
    return BooksSql::single(m_db, u"SELECT COUNT(*) FROM documents_links WHERE envelope_id = ? AND position = ?"_s,
               { envelopeId, position })
        > 0;
}

void SigningLinks::issue(const QString &envelopeId, int position, qint64 nowMs)
{
    run(m_db,
        u"UPDATE documents_links SET superseded_at = ? WHERE envelope_id = ? AND used_at IS NULL"
        " AND superseded_at IS NULL"_s,
        { nowMs, envelopeId });
    const QString id = newID("lnk-"_L1) + WorkspaceTokens::random(9);
    run(m_db,
        u"INSERT INTO documents_links (id, token_hash, envelope_id, position, made_at, expires_at)"
        " VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, WorkspaceTokens::hash(tokenOf(id)), envelopeId, position, nowMs, nowMs + lifeMs });
}

QMap<int, SigningLinks::Answer> SigningLinks::answers(const QString &envelopeId) const
{
    QSqlQuery q = run(m_db,
        u"SELECT position, outcome, answered_at, typed_name, address, reason FROM documents_answers"
        " WHERE envelope_id = ?"_s,
        { envelopeId });
    QMap<int, Answer> out;
    while (q.next())
        out.insert(q.value(0).toInt(),
            { q.value(1).toString(), q.value(2).toLongLong(), q.value(3).toString(), q.value(4).toString(),
                q.value(5).toString() });
    return out;
}

bool SigningLinks::spend(const QString &token, const QString &envelopeId, int position, const Answer &answer)
{
    QSqlQuery used = run(m_db,
        u"UPDATE documents_links SET used_at = ? WHERE token_hash = ? AND used_at IS NULL"
        " AND superseded_at IS NULL"_s,
        { answer.atMs, WorkspaceTokens::hash(token) });
    if (used.numRowsAffected() != 1)
        return false;
    keep(envelopeId, position, answer);
    return true;
}

void SigningLinks::keep(const QString &envelopeId, int position, const Answer &answer)
{
    run(m_db,
        u"INSERT OR IGNORE INTO documents_answers"
        " (envelope_id, position, outcome, answered_at, typed_name, address, reason) VALUES (?, ?, ?, ?, ?, ?, ?)"_s,
        { envelopeId, position, answer.outcome, answer.atMs, orNull(answer.typedName), answer.address,
            orNull(answer.reason) });
}

bool SigningLinks::expire(const QString &envelopeId)
{
    return run(m_db,
               u"UPDATE documents_links SET expires_at = ? WHERE envelope_id = ? AND used_at IS NULL"
               " AND superseded_at IS NULL"_s,
               { BooksSql::nowMs() - 1, envelopeId })
               .numRowsAffected()
        > 0;
}
