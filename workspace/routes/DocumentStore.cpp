#include "workspace/routes/DocumentStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/DocumentPdf.h"

#include <QSet>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;
using BooksSql::newID;
using BooksSql::nowMs;
using BooksSql::optionalText;
using BooksSql::orNull;
using BooksSql::run;
using BooksSql::single;
using BooksSql::text;

namespace {

const QString docsApp = u"Docs"_s;
const QStringList kinds { u"worksheet"_s, u"agreement"_s, u"proposal"_s };
constexpr qsizetype messageLimit = 2000;

} // namespace

DocumentStore::DocumentStore(WorkspaceStore &store)
    : m_store(store)
    , m_links(store.database())
{
}

bool DocumentStore::mayUse(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->apps.contains(docsApp);
}

bool DocumentStore::hasDocuments() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM documents_items"_s) > 0;
}

WorkspaceReply DocumentStore::list(const QString &kind) const
{
    if (!kind.isEmpty() && !kinds.contains(kind))
        return WorkspaceReply::error(400, u"A kind is one of: %1."_s.arg(kinds.join(u", "_s)));
    QSqlQuery q = run(m_store.database(),
        u"SELECT d.id, d.kind, d.title, d.client_id, c.name, p.name, d.status, d.updated_at, d.pages,"
        " (SELECT e.id FROM documents_envelopes e WHERE e.document_id = d.id ORDER BY e.created_at DESC LIMIT 1)"
        " FROM documents_items d LEFT JOIN clients c ON c.id = d.client_id LEFT JOIN people p ON p.id = d.owner_id"
        " WHERE ? OR d.kind = ? ORDER BY d.updated_at DESC, d.id"_s,
        { kind.isEmpty(), kind });
    QJsonArray out;
    while (q.next()) {
        QJsonObject row { { u"id"_s, q.value(0).toString() }, { u"kind"_s, q.value(1).toString() },
            { u"title"_s, q.value(2).toString() }, { u"client_id"_s, optionalText(q.value(3)) },
            { u"client_name"_s, optionalText(q.value(4)) }, { u"owner_name"_s, q.value(5).toString() },
            { u"status"_s, q.value(6).toString() }, { u"updated_at"_s, isoTime(q.value(7).toLongLong()) },
            { u"pages"_s, q.value(8).toInt() }, { u"envelope_id"_s, optionalText(q.value(9)) },
            { u"envelope_status"_s, QJsonValue(QJsonValue::Null) } };
        if (!q.value(9).isNull()) {
            const QString status = envelopeObject(q.value(9).toString()).value("status"_L1).toString();
            row.insert(u"envelope_status"_s, status);
            // A document whose envelope every signer signed is signed.
            if (status == "completed"_L1)
                row.insert(u"status"_s, u"signed"_s);
        }
        out.append(row);
    }
    return WorkspaceReply::json(out);
}

std::optional<DocumentStore::Text> DocumentStore::documentText(const QString &documentId) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT d.title, d.kind, d.status, c.name, p.name, d.pages FROM documents_items d"
        " LEFT JOIN clients c ON c.id = d.client_id LEFT JOIN people p ON p.id = d.owner_id WHERE d.id = ?"_s,
        { documentId });
    if (!q.next())
        return std::nullopt;
    const QString kind = q.value(1).toString();
    QStringList lines { kind.left(1).toUpper() + kind.mid(1) + u" \u00b7 "_s + q.value(2).toString() };
    if (!q.value(3).isNull())
        lines.append(u"Prepared for "_s + q.value(3).toString());
    lines.append(u"Prepared by "_s + q.value(4).toString() + u" at Halvard Studio"_s);
    return Text { q.value(0).toString(), lines, q.value(5).toInt() };
}

WorkspaceReply DocumentStore::pdf(const QString &id) const
{
    const std::optional<Text> found = documentText(id);
    if (!found)
        return WorkspaceReply::error(404, u"No such document."_s);
    WorkspaceReply reply;
    reply.contentType = "application/pdf";
    reply.body = DocumentPdf::render(found->title, found->lines, found->pages);
    return reply;
}

QJsonObject DocumentStore::envelopeObject(const QString &id, const QString &host) const
{
    QSqlQuery e = run(m_store.database(),
        u"SELECT e.id, e.document_id, d.title, e.message, p.name, e.created_at, e.sent_at"
        " FROM documents_envelopes e JOIN documents_items d ON d.id = e.document_id"
        " LEFT JOIN people p ON p.id = e.created_by WHERE e.id = ?"_s,
        { id });
    if (!e.next())
        return {};
    const bool sent = !e.value(6).isNull();
    const QMap<int, SigningLinks::Answer> answers = m_links.answers(id);
    const bool declined = std::any_of(
        answers.cbegin(), answers.cend(), [](const SigningLinks::Answer &a) { return a.outcome == "declined"_L1; });
    const std::optional<int> turn = turnOf(id);
    const qint64 now = nowMs();
    QJsonArray signers;
    qint64 lastSigned = 0;
    QSqlQuery s = run(m_store.database(),
        u"SELECT position, name, email FROM documents_signers WHERE envelope_id = ? ORDER BY position"_s, { id });
    while (s.next()) {
        const int position = s.value(0).toInt();
        // After a decline, those not yet asked never will be.
        const QString unasked = declined ? u"cancelled"_s : u"waiting"_s;
        QJsonObject signer { { u"order"_s, position }, { u"name"_s, s.value(1).toString() },
            { u"email"_s, s.value(2).toString() }, { u"status"_s, unasked }, { u"signed_at"_s, QJsonValue() },
            { u"declined_at"_s, QJsonValue() }, { u"decline_reason"_s, QJsonValue() },
            { u"answered_from"_s, QJsonValue() }, { u"sign_url"_s, QJsonValue() },
            { u"link_expires_at"_s, QJsonValue() } };
        if (const auto answer = answers.constFind(position); answer != answers.cend()) {
            const bool signedIt = answer->outcome == "signed"_L1;
            signer.insert(u"status"_s, answer->outcome);
            signer.insert(signedIt ? u"signed_at"_s : u"declined_at"_s, isoTime(answer->atMs));
            signer.insert(u"decline_reason"_s, optionalText(answer->reason));
            signer.insert(u"answered_from"_s, optionalText(answer->address));
            if (signedIt)
                lastSigned = std::max(lastSigned, answer->atMs);
        } else if (turn == position) {
            const std::optional<SigningLinks::Link> link = m_links.live(id, position);
            const bool expired = !link || link->expired(now);
            signer.insert(u"status"_s, expired ? u"expired"_s : u"sent"_s);
            if (link)
                signer.insert(u"link_expires_at"_s, isoTime(link->expiresAtMs));
            if (link && !expired && !host.isEmpty())
                signer.insert(u"sign_url"_s, u"https://%1/sign/%2"_s.arg(host, link->token));
        }
        signers.append(signer);
    }
    const bool completed = sent && !declined && !turn;
    QString status = u"sent"_s;
    if (!sent)
        status = u"draft"_s;
    else if (declined)
        status = u"declined"_s;
    else if (completed)
        status = u"completed"_s;
    return { { u"id"_s, e.value(0).toString() }, { u"document_id"_s, e.value(1).toString() },
        { u"title"_s, e.value(2).toString() }, { u"message"_s, e.value(3).toString() }, { u"status"_s, status },
        { u"sender_name"_s, e.value(4).toString() }, { u"created_at"_s, isoTime(e.value(5).toLongLong()) },
        { u"sent_at"_s, sent ? QJsonValue(isoTime(e.value(6).toLongLong())) : QJsonValue() },
        { u"completed_at"_s, completed ? QJsonValue(isoTime(lastSigned)) : QJsonValue() }, { u"signers"_s, signers } };
}

std::optional<int> DocumentStore::turnOf(const QString &envelopeId) const
{
    if (single(m_store.database(), u"SELECT COUNT(*) FROM documents_envelopes WHERE id = ? AND sent_at IS NOT NULL"_s,
            { envelopeId })
        == 0)
        return std::nullopt;
    const QMap<int, SigningLinks::Answer> answers = m_links.answers(envelopeId);
    QSqlQuery s = run(m_store.database(),
        u"SELECT position FROM documents_signers WHERE envelope_id = ? ORDER BY position"_s, { envelopeId });
    while (s.next()) {
        const auto answer = answers.constFind(s.value(0).toInt());
        if (answer == answers.cend())
            return s.value(0).toInt();
        // A decline ends the envelope: nobody's turn comes after it.
        if (answer->outcome != "signed"_L1)
            return std::nullopt;
    }
    return std::nullopt;
}

WorkspaceReply DocumentStore::envelope(const QString &id, const QString &host) const
{
    const QJsonObject found = envelopeObject(id, host);
    if (found.isEmpty())
        return WorkspaceReply::error(404, u"No such envelope."_s);
    return WorkspaceReply::json(found);
}

WorkspaceReply DocumentStore::createEnvelope(const QString &me, const QJsonObject &body, const QString &host)
{
    const QString document = body.value("document_id"_L1).toString();
    const QString kind = text(m_store.database(), u"SELECT kind FROM documents_items WHERE id = ?"_s, { document });
    if (kind.isEmpty())
        return WorkspaceReply::error(404, u"No such document."_s);
    if (kind == "worksheet"_L1)
        return WorkspaceReply::error(400, u"A worksheet is a template; make an agreement or proposal from it first."_s);
    const QString message = body.value("message"_L1).toString();
    if (message.size() > messageLimit)
        return WorkspaceReply::error(400, u"A message is at most %1 characters."_s.arg(messageLimit));
    const QJsonArray given = body.value("recipients"_L1).toArray();
    if (given.isEmpty() || given.size() > recipientLimit)
        return WorkspaceReply::error(400, u"An envelope goes to between 1 and %1 signers."_s.arg(recipientLimit));
    QList<Recipient> recipients;
    QSet<QString> emails;
    for (const QJsonValue &value : given) {
        const QString name = value.toObject().value("name"_L1).toString().trimmed();
        const QString email = value.toObject().value("email"_L1).toString().trimmed().toLower();
        const qsizetype at = email.indexOf(u'@');
        if (name.isEmpty() || at <= 0 || at == email.size() - 1)
            return WorkspaceReply::error(400, u"Every signer needs a name and an email address."_s);
        if (emails.contains(email))
            return WorkspaceReply::error(400, u"%1 is on the envelope twice."_s.arg(email));
        emails.insert(email);
        recipients.append({ name, email });
    }
    // Unfinished: a draft, or sent with a signer still to sign and nobody declined.
    if (single(m_store.database(),
            u"SELECT COUNT(*) FROM documents_envelopes e WHERE e.document_id = ? AND (e.sent_at IS NULL"
            " OR (NOT EXISTS (SELECT 1 FROM documents_answers a WHERE a.envelope_id = e.id"
            " AND a.outcome = 'declined')"
            " AND (SELECT COUNT(*) FROM documents_answers a WHERE a.envelope_id = e.id)"
            " < (SELECT COUNT(*) FROM documents_signers s WHERE s.envelope_id = e.id)))"_s,
            { document })
        > 0)
        return WorkspaceReply::error(409, u"This document already has an envelope that is not finished."_s);
    const QString id = insertEnvelope(document, me, message, recipients);
    return WorkspaceReply::json(envelopeObject(id, host), 201);
}

WorkspaceReply DocumentStore::send(const QString &id, const QString &host)
{
    if (envelopeObject(id).isEmpty())
        return WorkspaceReply::error(404, u"No such envelope."_s);
    const qint64 now = nowMs();
    // Only a draft goes out, to its first signer: a second send finds it sent.
    if (run(m_store.database(), u"UPDATE documents_envelopes SET sent_at = ? WHERE id = ? AND sent_at IS NULL"_s,
            { now, id })
            .numRowsAffected()
        == 1) {
        m_links.issue(id, 1, now);
    } else if (const std::optional<int> turn = turnOf(id)) {
        const std::optional<SigningLinks::Link> link = m_links.live(id, *turn);
        if (!link || link->expired(now))
            m_links.issue(id, *turn, now);
    }
    return WorkspaceReply::json(envelopeObject(id, host));
}

bool DocumentStore::answer(const QString &token, const SigningLinks::Found &link, const SigningLinks::Answer &answer)
{
    if (link.state != SigningLinks::State::Open || turnOf(link.envelopeId) != link.position)
        return false;
    QSqlDatabase db = m_store.database();
    db.transaction();
    if (!m_links.spend(token, link.envelopeId, link.position, answer)) {
        db.rollback();
        return false;
    }
    if (const std::optional<int> next = turnOf(link.envelopeId))
        m_links.issue(link.envelopeId, *next, answer.atMs);
    db.commit();
    return true;
}

void DocumentStore::prepareSigning()
{
    const QSqlDatabase db = m_store.database();
    run(db,
        u"INSERT OR IGNORE INTO documents_answers (envelope_id, position, outcome, answered_at, typed_name, address)"
        " SELECT s.envelope_id, s.position, 'signed', e.sent_at + s.position * e.sign_ms, s.name, '127.0.0.1'"
        " FROM documents_signers s JOIN documents_envelopes e ON e.id = s.envelope_id"
        " WHERE e.sent_at IS NOT NULL AND e.sign_ms > 0 AND e.sent_at + s.position * e.sign_ms <= ?"_s,
        { nowMs() });
    run(db, u"UPDATE documents_envelopes SET sign_ms = 0 WHERE sign_ms <> 0"_s);
    QSqlQuery sent = run(db, u"SELECT id FROM documents_envelopes WHERE sent_at IS NOT NULL"_s);
    while (sent.next()) {
        const QString id = sent.value(0).toString();
        if (const std::optional<int> turn = turnOf(id); turn && !m_links.hasLink(id, *turn))
            m_links.issue(id, *turn, nowMs());
    }
}

QString DocumentStore::insertEnvelope(
    const QString &documentId, const QString &createdBy, const QString &message, const QList<Recipient> &recipients)
{
    const QString id = newID("env-"_L1);
    // `sign_ms` is left from when signing went by the clock.
    run(m_store.database(),
        u"INSERT INTO documents_envelopes (id, document_id, message, created_by, created_at, sign_ms)"
        " VALUES (?, ?, ?, ?, ?, 0)"_s,
        { id, documentId, message, createdBy, nowMs() });
    for (qsizetype i = 0; i < recipients.size(); ++i)
        run(m_store.database(),
            u"INSERT INTO documents_signers (envelope_id, position, name, email) VALUES (?, ?, ?, ?)"_s,
            { id, i + 1, recipients.at(i).name, recipients.at(i).email });
    return id;
}

void DocumentStore::addDocument(const Document &d)
{
    run(m_store.database(),
        u"INSERT INTO documents_items (id, kind, title, client_id, owner_id, status, updated_at, pages)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { d.id, d.kind, d.title, orNull(d.clientId), d.ownerId, d.status, d.updatedAtMs, d.pages });
}

void DocumentStore::addEnvelope(const QString &documentId, const QString &createdBy, const QString &message,
    const QList<Recipient> &recipients, qint64 sentAtMs, const QList<SigningLinks::Answer> &answers)
{
    const QString id = insertEnvelope(documentId, createdBy, message, recipients);
    if (sentAtMs > 0)
        run(m_store.database(), u"UPDATE documents_envelopes SET sent_at = ?, created_at = ? WHERE id = ?"_s,
            { sentAtMs, sentAtMs - 3600 * 1000, id });
    for (qsizetype i = 0; i < answers.size(); ++i)
        m_links.keep(id, int(i + 1), answers.at(i));
}
