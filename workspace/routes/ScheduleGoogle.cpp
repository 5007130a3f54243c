#include "workspace/routes/ScheduleGoogle.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/ScheduleStore.h"

#include <QDateTime>
#include <QJsonArray>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;
using BooksSql::newID;
using BooksSql::nowMs;
using BooksSql::optionalText;
using BooksSql::orNull;
using BooksSql::run;
using BooksSql::single;

namespace {

constexpr qsizetype longestTitle = 100;
constexpr qsizetype longestLocation = 200;
constexpr qint64 longestEventMs = 24LL * 60 * 60'000;

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS schedule_google_grants ("
    " person_id TEXT PRIMARY KEY REFERENCES people(id), granted_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS schedule_google_events ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), title TEXT NOT NULL,"
    " start_ms INTEGER NOT NULL, end_ms INTEGER NOT NULL, all_day INTEGER NOT NULL DEFAULT 0, location TEXT)",
    "CREATE INDEX IF NOT EXISTS schedule_google_events_by_person ON schedule_google_events (person_id, start_ms)",
};

const QString eventSql = u"SELECT id, title, start_ms, end_ms, all_day, location FROM schedule_google_events"_s;

QJsonObject eventFrom(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
        { u"start_at"_s, isoTime(q.value(2).toLongLong()) }, { u"end_at"_s, isoTime(q.value(3).toLongLong()) },
        { u"all_day"_s, q.value(4).toBool() }, { u"kind"_s, u"meeting"_s }, { u"location"_s, optionalText(q.value(5)) },
        { u"client_name"_s, QJsonValue() }, { u"calendar"_s, u"google"_s } };
}

} // namespace

ScheduleGoogle::ScheduleGoogle(WorkspaceStore &store)
    : m_store(store)
{
}

bool ScheduleGoogle::createSchema()
{
    return BooksSql::runAll(m_store.database(), schema);
}

bool ScheduleGoogle::isGranted(const QString &me) const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM schedule_google_grants WHERE person_id = ?"_s, { me }) > 0;
}

void ScheduleGoogle::grant(const QString &me)
{
    run(m_store.database(), u"INSERT OR IGNORE INTO schedule_google_grants (person_id, granted_at) VALUES (?, ?)"_s,
        { me, nowMs() });
}

WorkspaceReply ScheduleGoogle::events(const QString &me, const QJsonObject &params) const
{
    const std::optional<ScheduleStore::Range> range
        = ScheduleStore::readRange(params.value("from"_L1).toString(), params.value("to"_L1).toString());
    if (!range)
        return WorkspaceReply::error(400, ScheduleStore::rangeRefusal);
    QSqlQuery q = run(m_store.database(),
        eventSql
            + u" WHERE person_id = ? AND end_ms > ? AND start_ms < ?"
              " ORDER BY start_ms, title"_s,
        { me, range->from, range->to });
    QJsonArray events;
    while (q.next())
        events.append(eventFrom(q));
    return WorkspaceReply::json(QJsonObject { { u"events"_s, events } });
}

WorkspaceReply ScheduleGoogle::create(const QString &me, const QJsonObject &params)
{
    const QString title = params.value("title"_L1).toString().simplified();
    const QString location = params.value("location"_L1).toString().simplified();
    const std::optional<ScheduleStore::Range> range
        = ScheduleStore::readRange(params.value("start_at"_L1).toString(), params.value("end_at"_L1).toString());
    if (title.isEmpty() || title.size() > longestTitle)
        return WorkspaceReply::error(400, u"An event's title is 1 to 100 characters."_s);
    if (!range || range->to - range->from > longestEventMs)
        return WorkspaceReply::error(400, u"An event ends after it starts, within a day."_s);
    if (location.size() > longestLocation)
        return WorkspaceReply::error(400, u"A location is at most 200 characters."_s);
    return WorkspaceReply::json(eventObject(add(me, title, range->from, range->to, false, location)));
}

QJsonObject ScheduleGoogle::eventObject(const QString &id) const
{
    QSqlQuery q = run(m_store.database(), eventSql + u" WHERE id = ?"_s, { id });
    return q.next() ? eventFrom(q) : QJsonObject();
}

bool ScheduleGoogle::hasEvents() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM schedule_google_events"_s) > 0;
}

QString ScheduleGoogle::add(
    const QString &me, const QString &title, qint64 startMs, qint64 endMs, bool allDay, const QString &location)
{
    const QString id = newID("gev-"_L1);
    run(m_store.database(),
        u"INSERT INTO schedule_google_events (id, person_id, title, start_ms, end_ms, all_day, location)"
        " VALUES (?, ?, ?, ?, ?, ?, ?)"_s,
        { id, me, title, startMs, endMs, allDay ? 1 : 0, orNull(location) });
    return id;
}
