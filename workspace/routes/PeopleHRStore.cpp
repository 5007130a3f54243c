#include "workspace/routes/PeopleHRStore.h"

#include "screens/people/HRRules.h"
#include "screens/people/TarnPeopleRequests.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QJsonArray>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::nowMs;
using BooksSql::optionalText;
using BooksSql::orNull;
using BooksSql::run;
using BooksSql::single;
using BooksSql::text;

namespace {

const QString recordColumns
    = u"SELECT p.id, p.name, p.email, COALESCE(h.job_title, p.role), COALESCE(h.employment,"
      " CASE WHEN p.owner THEN 'owner' ELSE 'employee' END), COALESCE(h.started_on, ''), h.phone,"
      " h.emergency_contact, EXISTS (SELECT 1 FROM people_time_entries e WHERE e.person_id = p.id"
      " AND e.clock_out IS NULL), COALESCE(h.version, 0), ed.name"
      " FROM people p LEFT JOIN people_hr h ON h.person_id = p.id LEFT JOIN people ed ON ed.id = h.updated_by"_s;

QJsonObject recordFrom(const QSqlQuery &q, bool contacts)
{
    const auto contact
        = [&](int column) { return contacts ? optionalText(q.value(column)) : QJsonValue(QJsonValue::Null); };
    return { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
        { u"email"_s, q.value(2).toString() }, { u"job_title"_s, q.value(3).toString() },
        { u"employment"_s, q.value(4).toString() }, { u"started_on"_s, q.value(5).toString() },
        { u"phone"_s, contact(6) }, { u"emergency_contact"_s, contact(7) }, { u"clocked_in"_s, q.value(8).toBool() },
        { u"version"_s, q.value(9).toLongLong() } };
}

} // namespace

PeopleHRStore::PeopleHRStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool PeopleHRStore::hasRecords() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM people_hr"_s) > 0;
}

bool PeopleHRStore::isOwner(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->owner;
}

QJsonObject PeopleHRStore::record(const QString &id, bool contacts) const
{
    QSqlQuery q = run(m_store.database(), recordColumns + u" WHERE p.id = ?"_s, { id });
    return q.next() ? recordFrom(q, contacts) : QJsonObject();
}

WorkspaceReply PeopleHRStore::records(const QString &me) const
{
    const bool owner = isOwner(me);
    QSqlQuery q = run(m_store.database(), recordColumns + u" ORDER BY p.name, p.id"_s);
    QJsonArray out;
    while (q.next())
        out.append(recordFrom(q, owner));
    return WorkspaceReply::json(out);
}

WorkspaceReply PeopleHRStore::update(const QString &me, const QString &id, const QJsonObject &body)
{
    if (!isOwner(me))
        return WorkspaceReply::error(403, u"Only an owner changes HR records."_s);
    const QJsonObject current = record(id, true);
    if (current.isEmpty())
        return WorkspaceReply::error(404, u"No such person."_s);
    if (!body.value("version"_L1).isDouble())
        return WorkspaceReply::error(400, u"Send the \"version\" the change was based on."_s);
    if (body.value("version"_L1).toInteger() != current.value("version"_L1).toInteger()) {
        const QString editor = text(m_store.database(),
            u"SELECT p.name FROM people_hr h JOIN people p ON p.id = h.updated_by WHERE h.person_id = ?"_s, { id });
        return WorkspaceReply::json(
            QJsonObject { { u"error"_s,
                              u"%1 changed this record in the meantime; it now shows their change."_s.arg(
                                  editor.isEmpty() ? u"Someone"_s : editor) },
                { u"record"_s, current } },
            409);
    }
    const TarnHRRecordEdit edit { .job_title = body.value("job_title"_L1).toString().trimmed(),
        .employment = body.value("employment"_L1).toString(),
        .started_on = body.value("started_on"_L1).toString().trimmed(),
        .phone = body.value("phone"_L1).toString().trimmed(),
        .emergency_contact = body.value("emergency_contact"_L1).toString().trimmed(),
        .version = current.value("version"_L1).toInteger() + 1 };
    const QString problem = HRRules::editProblem(edit);
    if (!problem.isEmpty())
        return WorkspaceReply::error(400, problem);
    run(m_store.database(),
        u"INSERT OR REPLACE INTO people_hr (person_id, job_title, employment, started_on, phone, emergency_contact,"
        " version, updated_by, updated_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { id, edit.job_title, edit.employment, edit.started_on, orNull(edit.phone), orNull(edit.emergency_contact),
            edit.version, me, nowMs() });
    return WorkspaceReply::json(record(id, true));
}

void PeopleHRStore::set(const QString &personId, const TarnHRRecordEdit &record)
{
    run(m_store.database(),
        u"INSERT OR REPLACE INTO people_hr (person_id, job_title, employment, started_on, phone, emergency_contact,"
        " version) VALUES (?, ?, ?, ?, ?, ?, 1)"_s,
        { personId, record.job_title, record.employment, record.started_on, orNull(record.phone),
            orNull(record.emergency_contact) });
}
