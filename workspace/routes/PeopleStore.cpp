#include "workspace/routes/PeopleStore.h"

#include "screens/people/TimeClockRules.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::run;
using BooksSql::single;
using BooksSql::text;

namespace {

constexpr qint64 dayMs = 24LL * 3600 * 1000;

const QString entryColumns = u"SELECT e.id, e.person_id, p.name, e.clock_in, e.clock_out, ed.name, e.edited_at,"
                             " e.edit_reason, e.version FROM people_time_entries e JOIN people p ON p.id = e.person_id"
                             " LEFT JOIN people ed ON ed.id = e.edited_by"_s;

QJsonValue isoTimeOrNull(const QVariant &ms)
{
    if (ms.isNull())
        return QJsonValue(QJsonValue::Null);
    return QDateTime::fromMSecsSinceEpoch(ms.toLongLong(), Qt::UTC).toString(Qt::ISODateWithMs);
}

QJsonValue textOrNull(const QVariant &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(value.toString());
}

QJsonObject entryFrom(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"person_id"_s, q.value(1).toString() },
        { u"person_name"_s, q.value(2).toString() }, { u"clock_in"_s, isoTimeOrNull(q.value(3)) },
        { u"clock_out"_s, isoTimeOrNull(q.value(4)) }, { u"edited_by_name"_s, textOrNull(q.value(5)) },
        { u"edited_at"_s, isoTimeOrNull(q.value(6)) }, { u"edit_reason"_s, textOrNull(q.value(7)) },
        { u"version"_s, q.value(8).toLongLong() } };
}

QVariant msOrNull(const QDateTime &time)
{
    return time.isValid() ? QVariant(time.toMSecsSinceEpoch()) : QVariant(QMetaType::fromType<qint64>());
}

} // namespace

PeopleStore::PeopleStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool PeopleStore::isOwner(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->owner;
}

bool PeopleStore::hasEntries() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM people_time_entries"_s) > 0;
}

QJsonObject PeopleStore::entry(const QString &id) const
{
    QSqlQuery q = run(m_store.database(), entryColumns + u" WHERE e.id = ?"_s, { id });
    return q.next() ? entryFrom(q) : QJsonObject();
}

QString PeopleStore::openEntry(const QString &personId) const
{
    return text(m_store.database(), u"SELECT id FROM people_time_entries WHERE person_id = ? AND clock_out IS NULL"_s,
        { personId });
}

WorkspaceReply PeopleStore::week(const QString &me, const QString &week, const QString &person) const
{
    const QDate monday = QDate::fromString(week, Qt::ISODate);
    if (!monday.isValid() || monday.dayOfWeek() != Qt::Monday)
        return WorkspaceReply::error(400, u"A week is the date of its Monday, as YYYY-MM-DD."_s);
    const QString whose = person.isEmpty() ? me : person;
    if (whose != me && !isOwner(me))
        return WorkspaceReply::error(403, u"Only an owner sees another person's time clock."_s);
    const std::optional<WorkspacePerson> found = m_store.person(whose);
    if (!found)
        return WorkspaceReply::error(404, u"No such person."_s);
    // The week is the client's, in its own zone: a day either side reaches
    // every zone's week, and the client cuts the days itself.
    const qint64 from = QDateTime(monday, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch() - dayMs;
    const qint64 to = from + 9 * dayMs;
    QSqlQuery q = run(m_store.database(),
        entryColumns
            + u" WHERE e.person_id = ? AND e.clock_in < ? AND (e.clock_out IS NULL OR e.clock_out > ?)"
              " ORDER BY e.clock_in, e.id"_s,
        { whose, to, from });
    QJsonArray entries;
    while (q.next())
        entries.append(entryFrom(q));
    return WorkspaceReply::json(QJsonObject { { u"person_id"_s, whose }, { u"person_name"_s, found->name },
        { u"week"_s, monday.toString(Qt::ISODate) }, { u"clocked_in"_s, !openEntry(whose).isEmpty() },
        { u"entries"_s, entries } });
}

WorkspaceReply PeopleStore::clockIn(const QString &me)
{
    if (!openEntry(me).isEmpty())
        return WorkspaceReply::error(409, u"You are already clocked in."_s);
    const QString id = newID("time-"_L1);
    run(m_store.database(), u"INSERT INTO people_time_entries (id, person_id, clock_in) VALUES (?, ?, ?)"_s,
        { id, me, QDateTime::currentMSecsSinceEpoch() });
    return WorkspaceReply::json(entry(id), 201);
}

WorkspaceReply PeopleStore::clockOut(const QString &me)
{
    const QString id = openEntry(me);
    if (id.isEmpty())
        return WorkspaceReply::error(409, u"You are not clocked in."_s);
    run(m_store.database(), u"UPDATE people_time_entries SET clock_out = ? WHERE id = ?"_s,
        { QDateTime::currentMSecsSinceEpoch(), id });
    return WorkspaceReply::json(entry(id));
}

WorkspaceReply PeopleStore::editEntry(const QString &me, const QString &id, const QJsonObject &body)
{
    if (!isOwner(me))
        return WorkspaceReply::error(403, u"Only an owner corrects the time clock."_s);
    const QJsonObject current = entry(id);
    if (current.isEmpty())
        return WorkspaceReply::error(404, u"No such entry."_s);
    if (!body.value("version"_L1).isDouble())
        return WorkspaceReply::error(400, u"Send the \"version\" the correction was based on."_s);
    if (body.value("version"_L1).toInteger() != current.value("version"_L1).toInteger()) {
        const QString editor = current.value("edited_by_name"_L1).toString();
        return WorkspaceReply::json(QJsonObject { { u"error"_s,
                                                      u"%1 corrected this entry in the meantime; it now shows their "
                                                      "correction."_s.arg(editor.isEmpty() ? u"Someone"_s : editor) },
                                        { u"entry"_s, current } },
            409);
    }
    const QDateTime clockIn = QDateTime::fromString(body.value("clock_in"_L1).toString(), Qt::ISODateWithMs);
    const QDateTime clockOut = QDateTime::fromString(body.value("clock_out"_L1).toString(), Qt::ISODateWithMs);
    const QString reason = body.value("reason"_L1).toString().trimmed();
    const QString problem = TimeClockRules::editProblem(clockIn, clockOut, reason, QDateTime::currentDateTimeUtc());
    if (!problem.isEmpty())
        return WorkspaceReply::error(400, problem);
    const QString person = current.value("person_id"_L1).toString();
    const QString open = openEntry(person);
    if (!clockOut.isValid() && !open.isEmpty() && open != id)
        return WorkspaceReply::error(
            409, u"%1 is clocked in on another entry."_s.arg(current.value("person_name"_L1).toString()));
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    run(m_store.database(),
        u"INSERT INTO people_time_edits (entry_id, editor_id, edited_at, reason, old_clock_in, old_clock_out,"
        " clock_in, clock_out) SELECT id, ?, ?, ?, clock_in, clock_out, ?, ? FROM people_time_entries"
        " WHERE id = ?"_s,
        { me, now, reason, clockIn.toMSecsSinceEpoch(), msOrNull(clockOut), id });
    run(m_store.database(),
        u"UPDATE people_time_entries SET clock_in = ?, clock_out = ?, edited_by = ?, edited_at = ?,"
        " edit_reason = ?, version = version + 1 WHERE id = ?"_s,
        { clockIn.toMSecsSinceEpoch(), msOrNull(clockOut), me, now, reason, id });
    return WorkspaceReply::json(entry(id));
}

void PeopleStore::addEntry(const QString &personId, qint64 clockInMs, qint64 clockOutMs)
{
    run(m_store.database(),
        u"INSERT INTO people_time_entries (id, person_id, clock_in, clock_out) VALUES (?, ?, ?, ?)"_s,
        { newID("time-"_L1), personId, clockInMs,
            clockOutMs > 0 ? QVariant(clockOutMs) : QVariant(QMetaType::fromType<qint64>()) });
}
