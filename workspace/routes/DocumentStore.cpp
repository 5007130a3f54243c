#include "workspace/routes/DocumentStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/DocumentPdf.h"

#include <QDateTime>
#include <QSet>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::orNull;
using BooksSql::run;
using BooksSql::single;
using BooksSql::text;

namespace {

const QString docsApp = u"Docs"_s;
const QStringList kinds { u"worksheet"_s, u"agreement"_s, u"proposal"_s };
constexpr qsizetype messageLimit = 2000;

QJsonValue optionalText(const QVariant &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(value.toString());
}

QString isoTime(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(Qt::ISODateWithMs);
}

QJsonValue optionalTime(qint64 ms)
{
    return ms > 0 ? QJsonValue(isoTime(ms)) : QJsonValue(QJsonValue::Null);
}

} // namespace

DocumentStore::DocumentStore(WorkspaceStore &store)
    : m_store(store)
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

WorkspaceReply DocumentStore::pdf(const QString &id) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT d.title, d.kind, d.status, c.name, p.name, d.pages FROM documents_items d"
        " LEFT JOIN clients c ON c.id = d.client_id LEFT JOIN people p ON p.id = d.owner_id WHERE d.id = ?"_s,
        { id });
    if (!q.next())
        return WorkspaceReply::error(404, u"No such document."_s);
    const QString kind = q.value(1).toString();
    QStringList lines { kind.left(1).toUpper() + kind.mid(1) + u" \u00b7 "_s + q.value(2).toString() };
    if (!q.value(3).isNull())
        lines.append(u"Prepared for "_s + q.value(3).toString());
    lines.append(u"Prepared by "_s + q.value(4).toString() + u" at Halvard Studio"_s);
    WorkspaceReply reply;
    reply.contentType = "application/pdf";
    reply.body = DocumentPdf::render(q.value(0).toString(), lines, q.value(5).toInt());
    return reply;
}

QJsonObject DocumentStore::envelopeObject(const QString &id) const
{
    QSqlQuery e = run(m_store.database(),
        u"SELECT e.id, e.document_id, d.title, e.message, p.name, e.created_at, e.sent_at, e.sign_ms"
        " FROM documents_envelopes e JOIN documents_items d ON d.id = e.document_id"
        " LEFT JOIN people p ON p.id = e.created_by WHERE e.id = ?"_s,
        { id });
    if (!e.next())
        return {};
    const qint64 sent = e.value(6).isNull() ? 0 : e.value(6).toLongLong();
    const qint64 every = e.value(7).toLongLong();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    QJsonArray signers;
    qint64 lastSigned = 0;
    QSqlQuery s = run(m_store.database(),
        u"SELECT position, name, email FROM documents_signers WHERE envelope_id = ? ORDER BY position"_s, { id });
    while (s.next()) {
        const qint64 order = s.value(0).toLongLong();
        // The n-th signer signs n turns after the envelope was sent.
        const qint64 signsAt = sent + order * every;
        QString status = u"waiting"_s;
        if (sent > 0 && signsAt <= now)
            status = u"signed"_s;
        else if (sent > 0 && signsAt - every <= now)
            status = u"sent"_s;
        if (status == "signed"_L1)
            lastSigned = signsAt;
        signers.append(QJsonObject { { u"order"_s, order }, { u"name"_s, s.value(1).toString() },
            { u"email"_s, s.value(2).toString() }, { u"status"_s, status },
            { u"signed_at"_s, status == "signed"_L1 ? optionalTime(signsAt) : QJsonValue(QJsonValue::Null) } });
    }
    const bool completed
        = sent > 0 && !signers.isEmpty() && signers.last().toObject().value("status"_L1).toString() == "signed"_L1;
    return { { u"id"_s, e.value(0).toString() }, { u"document_id"_s, e.value(1).toString() },
        { u"title"_s, e.value(2).toString() }, { u"message"_s, e.value(3).toString() },
        { u"status"_s, sent == 0 ? u"draft"_s : (completed ? u"completed"_s : u"sent"_s) },
        { u"sender_name"_s, e.value(4).toString() }, { u"created_at"_s, isoTime(e.value(5).toLongLong()) },
        { u"sent_at"_s, optionalTime(sent) },
        { u"completed_at"_s, completed ? optionalTime(lastSigned) : QJsonValue() }, { u"signers"_s, signers } };
}

WorkspaceReply DocumentStore::envelope(const QString &id) const
{
    const QJsonObject found = envelopeObject(id);
    if (found.isEmpty())
        return WorkspaceReply::error(404, u"No such envelope."_s);
    return WorkspaceReply::json(found);
}

WorkspaceReply DocumentStore::createEnvelope(const QString &me, const QJsonObject &body)
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
    if (single(m_store.database(),
            u"SELECT COUNT(*) FROM documents_envelopes e WHERE e.document_id = ? AND (e.sent_at IS NULL"
            " OR e.sent_at + e.sign_ms * (SELECT COUNT(*) FROM documents_signers s WHERE s.envelope_id = e.id) > ?)"_s,
            { document, QDateTime::currentMSecsSinceEpoch() })
        > 0)
        return WorkspaceReply::error(409, u"This document already has an envelope that is not finished."_s);
    const QString id = insertEnvelope(document, me, message, recipients, signMs);
    return WorkspaceReply::json(envelopeObject(id), 201);
}

WorkspaceReply DocumentStore::send(const QString &id)
{
    if (envelopeObject(id).isEmpty())
        return WorkspaceReply::error(404, u"No such envelope."_s);
    // Only a draft goes out: a second send finds it sent and leaves it.
    run(m_store.database(), u"UPDATE documents_envelopes SET sent_at = ? WHERE id = ? AND sent_at IS NULL"_s,
        { QDateTime::currentMSecsSinceEpoch(), id });
    return WorkspaceReply::json(envelopeObject(id));
}

QString DocumentStore::insertEnvelope(const QString &documentId, const QString &createdBy, const QString &message,
    const QList<Recipient> &recipients, qint64 signEveryMs)
{
    const QString id = newID("env-"_L1);
    run(m_store.database(),
        u"INSERT INTO documents_envelopes (id, document_id, message, created_by, created_at, sign_ms)"
        " VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, documentId, message, createdBy, QDateTime::currentMSecsSinceEpoch(), signEveryMs });
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
    const QList<Recipient> &recipients, qint64 sentAtMs, qint64 signEveryMs)
{
    const QString id = insertEnvelope(documentId, createdBy, message, recipients, signEveryMs);
    if (sentAtMs > 0)
        run(m_store.database(), u"UPDATE documents_envelopes SET sent_at = ?, created_at = ? WHERE id = ?"_s,
            { sentAtMs, sentAtMs - 3600 * 1000, id });
}
