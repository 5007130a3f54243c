#include "workspace/routes/WorkPlanStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QSqlQuery>
#include <QTime>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::nowMs;
using BooksSql::optionalText;
using BooksSql::orNull;
using BooksSql::run;
using BooksSql::single;

namespace {

constexpr qsizetype titleLimit = 200;
constexpr qsizetype noteLimit = 2000;

const QString entryColumns = u"SELECT e.id, e.person_id, e.kind, e.title, e.day, e.time, e.client_id, c.name, e.notes,"
                             " e.done_at IS NOT NULL, d.name, e.version, w.name FROM workplan_entries e"
                             " LEFT JOIN clients c ON c.id = e.client_id LEFT JOIN people d ON d.id = e.done_by"
                             " LEFT JOIN people w ON w.id = e.edited_by"_s;

QJsonObject entryFrom(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"person_id"_s, q.value(1).toString() },
        { u"kind"_s, q.value(2).toString() }, { u"title"_s, q.value(3).toString() },
        { u"day"_s, q.value(4).toString() }, { u"time"_s, optionalText(q.value(5)) },
        { u"client_id"_s, optionalText(q.value(6)) }, { u"client_name"_s, optionalText(q.value(7)) },
        { u"notes"_s, q.value(8).toString() }, { u"done"_s, q.value(9).toBool() },
        { u"done_by_name"_s, optionalText(q.value(10)) }, { u"version"_s, q.value(11).toLongLong() } };
}

// A text field of a body: collapsed, 1 to `limit` characters. Answers the
// refusal in `refusal` when it is not.
QString textOf(const QJsonObject &body, QLatin1StringView key, qsizetype limit, const QString &what, QString &refusal)
{
    const QString text = body.value(key).toString().simplified();
    if (text.isEmpty())
        refusal = u"%1 cannot be empty."_s.arg(what);
    else if (text.size() > limit)
        refusal = u"%1 is at most %2 characters."_s.arg(what).arg(limit);
    return text;
}

std::optional<QDate> dayOf(const QJsonObject &body)
{
    const QDate day = QDate::fromString(body.value("day"_L1).toString(), Qt::ISODate);
    return day.isValid() ? std::optional(day) : std::nullopt;
}

const QString badDay = u"A day is written YYYY-MM-DD."_s;

// Never null: the column is NOT NULL and a null text binds as NULL.
QString notesOf(const QJsonObject &body)
{
    const QString notes = body.value("notes"_L1).toString().trimmed().left(noteLimit);
    return notes.isNull() ? u""_s : notes;
}

} // namespace

WorkPlanStore::WorkPlanStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool WorkPlanStore::mayPlan(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && (person->owner || person->apps.contains(u"Sales"_s));
}

bool WorkPlanStore::coaches(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && (person->owner || person->role == "manager"_L1);
}

bool WorkPlanStore::hasWeek(const QDate &monday) const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM workplan_entries WHERE day >= ? AND day <= ?"_s,
               { monday.toString(Qt::ISODate), monday.addDays(6).toString(Qt::ISODate) })
        > 0;
}

WorkspaceReply WorkPlanStore::plan(const QString &me, const QString &week) const
{
    const QDate monday = QDate::fromString(week, Qt::ISODate);
    if (!monday.isValid() || monday.dayOfWeek() != Qt::Monday)
        return WorkspaceReply::error(400, u"A week is given by its Monday, YYYY-MM-DD."_s);
    const QVariantList range { monday.toString(Qt::ISODate), monday.addDays(6).toString(Qt::ISODate) };
    const bool coach = coaches(me);
    QJsonArray people;
    for (const WorkspacePerson &person : m_store.people()) {
        QJsonArray entries;
        QSqlQuery q = run(m_store.database(),
            entryColumns
                + u" WHERE e.person_id = ? AND e.day >= ? AND e.day <= ? ORDER BY e.day, e.time, e.created_at"_s,
            { person.id, range.at(0), range.at(1) });
        while (q.next())
            entries.append(entryFrom(q));
        QJsonArray notes;
        if (coach || person.id == me) {
            QSqlQuery n = run(m_store.database(),
                u"SELECT n.id, a.name, n.body, n.created_at FROM workplan_coach_notes n"
                " JOIN people a ON a.id = n.author_id WHERE n.person_id = ? AND n.week = ? ORDER BY n.created_at"_s,
                { person.id, range.at(0) });
            while (n.next()) {
                notes.append(QJsonObject { { u"id"_s, n.value(0).toString() },
                    { u"author_name"_s, n.value(1).toString() }, { u"body"_s, n.value(2).toString() },
                    { u"created_at"_s, BooksSql::isoTime(n.value(3).toLongLong()) } });
            }
        }
        people.append(QJsonObject { { u"id"_s, person.id }, { u"name"_s, person.name }, { u"role"_s, person.role },
            { u"entries"_s, entries }, { u"coach_notes"_s, notes } });
    }
    return WorkspaceReply::json(
        QJsonObject { { u"week"_s, range.at(0).toString() }, { u"may_coach"_s, coach }, { u"people"_s, people } });
}

QJsonObject WorkPlanStore::entry(const QString &id) const
{
    QSqlQuery q = run(m_store.database(), entryColumns + u" WHERE e.id = ?"_s, { id });
    return q.next() ? entryFrom(q) : QJsonObject();
}

WorkspaceReply WorkPlanStore::complete(const QString &me, const QString &id, const QJsonObject &body)
{
    const QJsonObject before = entry(id);
    if (before.isEmpty())
        return WorkspaceReply::error(404, u"No such entry."_s);
    if (before.value("person_id"_L1).toString() != me && !coaches(me))
        return WorkspaceReply::error(403, u"Only an owner or a manager completes someone else's work."_s);
    if (!body.value("done"_L1).isBool())
        return WorkspaceReply::error(400, u"\"done\" is true or false."_s);
    const bool done = body.value("done"_L1).toBool();
    // Completing twice keeps the first completion's time and person.
    if (done != before.value("done"_L1).toBool()) {
        run(m_store.database(),
            u"UPDATE workplan_entries SET done_at = ?, done_by = ?, version = version + 1 WHERE id = ?"_s,
            { done ? QVariant(nowMs()) : QVariant(QMetaType::fromType<qint64>()), done ? QVariant(me) : orNull({}),
                id });
    }
    return WorkspaceReply::json(entry(id));
}

std::optional<WorkspaceReply> WorkPlanStore::draftRefusal(
    const QString &me, const QJsonObject &body, Planned &draft) const
{
    draft.person_id = body.value("person_id"_L1).toString(me);
    if (!m_store.person(draft.person_id))
        return WorkspaceReply::error(404, u"No such person."_s);
    if (draft.person_id != me && !coaches(me))
        return WorkspaceReply::error(403, u"Only an owner or a manager plans work for someone else."_s);
    QString refusal;
    draft.title = textOf(body, "title"_L1, titleLimit, u"A title"_s, refusal);
    if (!refusal.isEmpty())
        return WorkspaceReply::error(400, refusal);
    const std::optional<QDate> day = dayOf(body);
    if (!day)
        return WorkspaceReply::error(400, badDay);
    draft.day = *day;
    return std::nullopt;
}

WorkspaceReply WorkPlanStore::createAdminTask(const QString &me, const QJsonObject &body)
{
    Planned draft { .kind = u"admin"_s, .notes = notesOf(body) };
    if (const std::optional<WorkspaceReply> refusal = draftRefusal(me, body, draft))
        return *refusal;
    return WorkspaceReply::json(QJsonObject { { u"id"_s, add(draft, me) } });
}

WorkspaceReply WorkPlanStore::updateAdminTask(const QString &me, const QString &id, const QJsonObject &body)
{
    const QJsonObject before = entry(id);
    if (before.isEmpty() || before.value("kind"_L1).toString() != "admin"_L1)
        return WorkspaceReply::error(404, u"No such admin task."_s);
    if (before.value("person_id"_L1).toString() != me && !coaches(me))
        return WorkspaceReply::error(403, u"Only an owner or a manager changes someone else's task."_s);
    if (body.value("version"_L1).toInteger() != before.value("version"_L1).toInteger()) {
        const QString who = BooksSql::text(m_store.database(),
            u"SELECT p.name FROM workplan_entries e JOIN people p ON p.id = e.edited_by WHERE e.id = ?"_s, { id });
        return WorkspaceReply::json(
            QJsonObject { { u"error"_s,
                              u"%1 changed this task in the meantime; it now shows their change."_s.arg(
                                  who.isEmpty() ? u"Someone"_s : who) },
                { u"entry"_s, before } },
            409);
    }
    QString title = before.value("title"_L1).toString();
    QString refusal;
    if (body.contains("title"_L1))
        title = textOf(body, "title"_L1, titleLimit, u"A title"_s, refusal);
    if (!refusal.isEmpty())
        return WorkspaceReply::error(400, refusal);
    QDate day = QDate::fromString(before.value("day"_L1).toString(), Qt::ISODate);
    if (body.contains("day"_L1)) {
        const std::optional<QDate> given = dayOf(body);
        if (!given)
            return WorkspaceReply::error(400, badDay);
        day = *given;
    }
    const QString notes = body.contains("notes"_L1) ? notesOf(body) : before.value("notes"_L1).toString();
    run(m_store.database(),
        u"UPDATE workplan_entries SET title = ?, day = ?, notes = ?, edited_by = ?, version = version + 1"
        " WHERE id = ?"_s,
        { title, day.toString(Qt::ISODate), notes, me, id });
    return WorkspaceReply::json(entry(id));
}

WorkspaceReply WorkPlanStore::createReminder(const QString &me, const QJsonObject &body)
{
    Planned draft { .kind = u"reminder"_s, .time = body.value("time"_L1).toString() };
    if (const std::optional<WorkspaceReply> refusal = draftRefusal(me, body, draft))
        return *refusal;
    if (!draft.time.isEmpty() && !QTime::fromString(draft.time, u"HH:mm"_s).isValid())
        return WorkspaceReply::error(400, u"A time is written HH:mm."_s);
    draft.client_id = body.value("client_id"_L1).toString();
    if (!draft.client_id.isEmpty()
        && !single(m_store.database(), u"SELECT COUNT(*) FROM clients WHERE id = ?"_s, { draft.client_id }))
        return WorkspaceReply::error(404, u"No such customer."_s);
    return WorkspaceReply::json(QJsonObject { { u"id"_s, add(draft, me) } });
}

WorkspaceReply WorkPlanStore::addCoachNote(const QString &me, const QString &person, const QJsonObject &body)
{
    if (!coaches(me))
        return WorkspaceReply::error(403, u"Only an owner or a manager adds coaching notes."_s);
    if (!m_store.person(person))
        return WorkspaceReply::error(404, u"No such person."_s);
    const QDate monday = QDate::fromString(body.value("week"_L1).toString(), Qt::ISODate);
    if (!monday.isValid() || monday.dayOfWeek() != Qt::Monday)
        return WorkspaceReply::error(400, u"A week is given by its Monday, YYYY-MM-DD."_s);
    const QString text = body.value("body"_L1).toString().trimmed();
    if (text.isEmpty())
        return WorkspaceReply::error(400, u"A note cannot be empty."_s);
    if (text.size() > noteLimit)
        return WorkspaceReply::error(400, u"A note is at most %1 characters."_s.arg(noteLimit));
    const QString id = newID("wpn-"_L1);
    run(m_store.database(),
        u"INSERT INTO workplan_coach_notes (id, person_id, week, author_id, body, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, person, monday.toString(Qt::ISODate), me, text, nowMs() });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } });
}

QString WorkPlanStore::add(const Planned &planned, const QString &createdBy)
{
    const QString id = newID("wp-"_L1);
    run(m_store.database(),
        u"INSERT INTO workplan_entries (id, person_id, kind, title, day, time, client_id, notes, done_at, done_by,"
        " created_by, created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { id, planned.person_id, planned.kind, planned.title, planned.day.toString(Qt::ISODate), orNull(planned.time),
            orNull(planned.client_id), planned.notes.isNull() ? u""_s : planned.notes,
            planned.done ? QVariant(nowMs()) : QVariant(QMetaType::fromType<qint64>()),
            planned.done ? QVariant(planned.person_id) : orNull({}), createdBy, nowMs() });
    return id;
}

void WorkPlanStore::addNote(const QString &person, const QDate &monday, const QString &author, const QString &body)
{
    run(m_store.database(),
        u"INSERT INTO workplan_coach_notes (id, person_id, week, author_id, body, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { newID("wpn-"_L1), person, monday.toString(Qt::ISODate), author, body,
            QDateTime(monday, QTime(9, 0), Qt::UTC).toMSecsSinceEpoch() });
}
