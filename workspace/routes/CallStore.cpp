#include "workspace/routes/CallStore.h"

#include "screens/calls/CallBookRules.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/CallAudio.h"

#include <QDateTime>
#include <QJsonArray>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;
using BooksSql::newID;
using BooksSql::orNull;
using BooksSql::run;
using BooksSql::single;
using BooksSql::text;

namespace {

const QString callsApp = u"Calls"_s;
const QStringList outcomes { u"answered"_s, u"missed"_s, u"voicemail"_s, u"no-answer"_s, u"busy"_s };
constexpr qsizetype notesLimit = 2000;

const QString callColumns = u"SELECT b.id, b.direction, b.client_id, c.name, b.person_id, p.name, b.number,"
                            " b.started_at, b.duration, b.outcome, b.notes, b.recorded, b.version, b.ring_ms"
                            " FROM calls_book b LEFT JOIN clients c ON c.id = b.client_id"
                            " LEFT JOIN people p ON p.id = b.person_id"_s;

QJsonValue optionalText(const QVariant &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(value.toString());
}

// A placed call's state follows from its age; the call book's older calls
// have ended long ago.
QJsonObject callFrom(const QSqlQuery &q)
{
    const qint64 started = q.value(7).toLongLong();
    const qint64 ring = q.value(13).toLongLong();
    const int duration = q.value(8).toInt();
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - started;
    QString status = u"ended"_s;
    int shownDuration = duration;
    if (age < ring) {
        status = u"ringing"_s;
        shownDuration = 0;
    } else if (age < ring + duration * 1000LL) {
        status = u"in-call"_s;
        shownDuration = int((age - ring) / 1000);
    }
    return { { u"id"_s, q.value(0).toString() }, { u"direction"_s, q.value(1).toString() },
        { u"client_id"_s, optionalText(q.value(2)) }, { u"client_name"_s, optionalText(q.value(3)) },
        { u"person_id"_s, q.value(4).toString() }, { u"person_name"_s, q.value(5).toString() },
        { u"number"_s, q.value(6).toString() }, { u"started_at"_s, isoTime(started) }, { u"duration"_s, shownDuration },
        { u"outcome"_s, q.value(9).toString() }, { u"notes"_s, q.value(10).toString() }, { u"status"_s, status },
        { u"has_recording"_s, q.value(11).toBool() && status == "ended"_L1 },
        { u"version"_s, q.value(12).toLongLong() } };
}

QString digitsOf(const QString &number)
{
    QString out;
    for (const QChar c : number)
        if (c.isDigit())
            out.append(c);
    return out;
}

} // namespace

CallStore::CallStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool CallStore::mayUse(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->apps.contains(callsApp);
}

bool CallStore::hasCalls() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM calls_book"_s) > 0;
}

QJsonArray CallStore::calls(const QString &where, const QVariantList &values) const
{
    QSqlQuery q = run(m_store.database(), callColumns + where + u" ORDER BY b.started_at DESC, b.id"_s, values);
    QJsonArray out;
    while (q.next())
        out.append(callFrom(q));
    return out;
}

QJsonObject CallStore::call(const QString &id) const
{
    const QJsonArray found = calls(u" WHERE b.id = ?"_s, { id });
    return found.isEmpty() ? QJsonObject() : found.first().toObject();
}

WorkspaceReply CallStore::list() const
{
    return WorkspaceReply::json(calls({}, {}));
}

WorkspaceReply CallStore::saveCell(const QString &me, const QString &id, const QJsonObject &body)
{
    const QJsonObject current = call(id);
    if (current.isEmpty())
        return WorkspaceReply::error(404, u"No such call."_s);
    QStringList cells;
    for (const QString &key : { u"outcome"_s, u"notes"_s, u"client_id"_s })
        if (body.contains(key))
            cells.append(key);
    if (cells.size() != 1 || !body.value("version"_L1).isDouble())
        return WorkspaceReply::error(
            400, u"Send one of \"outcome\", \"notes\" or \"client_id\" with the \"version\" it was based on."_s);
    if (body.value("version"_L1).toInteger() != current.value("version"_L1).toInteger()) {
        const QString editor = text(m_store.database(),
            u"SELECT p.name FROM calls_book b JOIN people p ON p.id = b.edited_by"
            " WHERE b.id = ?"_s,
            { id });
        QJsonObject refusal { { u"error"_s,
                                  u"%1 changed this call in the meantime; it now shows their change."_s.arg(
                                      editor.isEmpty() ? u"Someone"_s : editor) },
            { u"call"_s, current } };
        return WorkspaceReply::json(refusal, 409);
    }
    const QString cell = cells.first();
    const QJsonValue value = body.value(cell);
    if (cell == "outcome"_L1 && !outcomes.contains(value.toString()))
        return WorkspaceReply::error(400, u"An outcome is one of: %1."_s.arg(outcomes.join(u", "_s)));
    if (cell == "notes"_L1 && (!value.isString() || value.toString().size() > notesLimit))
        return WorkspaceReply::error(400, u"Notes are text of at most %1 characters."_s.arg(notesLimit));
    if (cell == "client_id"_L1 && !value.isNull()
        && single(m_store.database(), u"SELECT COUNT(*) FROM clients WHERE id = ?"_s, { value.toString() }) == 0)
        return WorkspaceReply::error(400, u"No such customer."_s);
    // `cell` is one of the three names above, never the caller's text.
    run(m_store.database(),
        u"UPDATE calls_book SET %1 = ?, version = version + 1, edited_by = ? WHERE id = ?"_s.arg(cell),
        { value.isNull() ? QVariant(QMetaType::fromType<QString>()) : QVariant(value.toString()), me, id });
    return WorkspaceReply::json(call(id));
}

WorkspaceReply CallStore::start(const QString &me, const QJsonObject &body)
{
    const QString number = CallBookRules::dialledNumber(body.value("number"_L1).toString());
    if (number.isEmpty())
        return WorkspaceReply::error(400, u"That is not a number that can be called."_s);
    const QString mode = body.value("mode"_L1).toString();
    if (!CallBookRules::isMode(mode))
        return WorkspaceReply::error(400, u"A call's mode is \"phone-first\" or \"computer\"."_s);
    QString client = body.value("client_id"_L1).toString();
    if (!client.isEmpty()
        && single(m_store.database(), u"SELECT COUNT(*) FROM clients WHERE id = ?"_s, { client }) == 0)
        return WorkspaceReply::error(400, u"No such customer."_s);
    if (client.isEmpty()) {
        QSqlQuery q = run(m_store.database(), u"SELECT id, phone FROM clients WHERE phone IS NOT NULL"_s);
        while (q.next() && client.isEmpty())
            if (digitsOf(q.value(1).toString()) == digitsOf(number))
                client = q.value(0).toString();
    }
    const QString id = newID("call-"_L1);
    // Ringing one's own phone first takes a moment longer before the customer's rings.
    const qint64 ring = mode == "phone-first"_L1 ? ringMs + 1000 : ringMs;
    run(m_store.database(),
        u"INSERT INTO calls_book (id, direction, client_id, person_id, number, started_at, ring_ms, duration,"
        " outcome, notes, mode, recorded) VALUES (?, 'out', ?, ?, ?, ?, ?, ?, 'answered', '', ?, 1)"_s,
        { id, orNull(client), me, number, QDateTime::currentMSecsSinceEpoch(), ring, talkSeconds, mode });
    return WorkspaceReply::json(call(id), 201);
}

WorkspaceReply CallStore::recording(const QString &id) const
{
    const QJsonObject found = call(id);
    if (found.isEmpty())
        return WorkspaceReply::error(404, u"No such call."_s);
    if (found.value("status"_L1).toString() != "ended"_L1)
        return WorkspaceReply::error(409, u"The call is still going on."_s);
    if (!found.value("has_recording"_L1).toBool())
        return WorkspaceReply::error(404, u"This call was not recorded."_s);
    const int seconds = std::clamp(int(found.value("duration"_L1).toInteger()), 2, recordingSeconds);
    WorkspaceReply reply;
    reply.contentType = "audio/wav";
    reply.body = CallAudio::wav(id, seconds);
    return reply;
}

QJsonArray CallStore::leadRows(const QString &where, const QVariantList &values) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT c.id, c.name, c.phone, c.email, l.status, l.source, l.interest, p.name, l.estimate,"
        " (SELECT MAX(b.started_at) FROM calls_book b WHERE b.client_id = c.id),"
        " (SELECT COUNT(*) FROM calls_book b WHERE b.client_id = c.id)"
        " FROM clients c JOIN calls_leads l ON l.client_id = c.id LEFT JOIN people p ON p.id = l.owner_id"
        " WHERE c.board_id = 'leads'"_s
            + where + u" ORDER BY c.name"_s,
        values);
    QJsonArray out;
    while (q.next()) {
        out.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
            { u"phone"_s, optionalText(q.value(2)) }, { u"email"_s, optionalText(q.value(3)) },
            { u"status"_s, q.value(4).toString() }, { u"source"_s, q.value(5).toString() },
            { u"interest"_s, q.value(6).toString() }, { u"owner_name"_s, optionalText(q.value(7)) },
            { u"estimate"_s, q.value(8).toLongLong() },
            { u"last_call_at"_s,
                q.value(9).isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(isoTime(q.value(9).toLongLong())) },
            { u"call_count"_s, q.value(10).toLongLong() } });
    }
    return out;
}

WorkspaceReply CallStore::leads() const
{
    return WorkspaceReply::json(leadRows({}, {}));
}

WorkspaceReply CallStore::lead(const QString &id) const
{
    const QJsonArray found = leadRows(u" AND c.id = ?"_s, { id });
    if (found.isEmpty())
        return WorkspaceReply::error(404, u"No such lead."_s);
    return WorkspaceReply::json(
        QJsonObject { { u"lead"_s, found.first() }, { u"calls"_s, calls(u" WHERE b.client_id = ?"_s, { id }) } });
}

void CallStore::addCall(const Call &c)
{
    run(m_store.database(),
        u"INSERT INTO calls_book (id, direction, client_id, person_id, number, started_at, ring_ms, duration,"
        " outcome, notes, recorded) VALUES (?, ?, ?, ?, ?, ?, 0, ?, ?, ?, ?)"_s,
        { newID("call-"_L1), c.direction, orNull(c.clientId), c.personId, c.number, c.startedAtMs, c.duration,
            c.outcome, c.notes.isEmpty() ? u""_s : c.notes, c.recorded });
}

void CallStore::addLead(const QString &clientId, const QString &status, const QString &source, const QString &interest,
    const QString &ownerId, qint64 estimateCents)
{
    run(m_store.database(),
        u"INSERT OR IGNORE INTO calls_leads (client_id, status, source, interest, owner_id, estimate)"
        " VALUES (?, ?, ?, ?, ?, ?)"_s,
        { clientId, status, source, interest, orNull(ownerId), estimateCents });
}
