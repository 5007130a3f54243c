#include "workspace/routes/ScheduleStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QRegularExpression>
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

const QString scheduleApp = u"Schedule"_s;
constexpr qint64 shortestBooking = 15;
constexpr qint64 longestBooking = 240;
constexpr qsizetype longestTitle = 100;
constexpr qint64 minuteMs = 60'000;

const char *const schema[] = {
    // Times in milliseconds; an all-day event runs from a local midnight to
    // the local midnight after its last day.
    "CREATE TABLE IF NOT EXISTS schedule_events ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), title TEXT NOT NULL,"
    " start_ms INTEGER NOT NULL, end_ms INTEGER NOT NULL, all_day INTEGER NOT NULL DEFAULT 0,"
    " kind TEXT NOT NULL, location TEXT, client_id TEXT REFERENCES clients(id))",
    "CREATE INDEX IF NOT EXISTS schedule_events_by_person ON schedule_events (person_id, start_ms)",
    // `duration` in minutes; `slug` the last part of the page's address.
    "CREATE TABLE IF NOT EXISTS schedule_links ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), title TEXT NOT NULL,"
    " slug TEXT NOT NULL UNIQUE, duration INTEGER NOT NULL, created_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS schedule_bookings ("
    " id TEXT PRIMARY KEY, link_id TEXT NOT NULL REFERENCES schedule_links(id), name TEXT NOT NULL,"
    " email TEXT NOT NULL, start_ms INTEGER NOT NULL, note TEXT)",
};

// "Intro call" → "intro-call-7f3a": readable, and unique by its tail.
QString slugFor(const QString &title)
{
    static const QRegularExpression other(u"[^a-z0-9]+"_s);
    QString slug = title.toLower().replace(other, u"-"_s);
    slug = slug.mid(0, 40);
    while (slug.startsWith(u'-'))
        slug.remove(0, 1);
    while (slug.endsWith(u'-'))
        slug.chop(1);
    return (slug.isEmpty() ? u"book"_s : slug) + u'-' + newID("x"_L1).right(4);
}

// A link with its bookings still to come (the first two values: now), `%1`
// the condition.
const QString linkSql = u"SELECT l.id, l.title, l.duration, l.slug,"
                        " (SELECT COUNT(*) FROM schedule_bookings b WHERE b.link_id = l.id AND b.start_ms >= ?),"
                        " (SELECT MIN(b.start_ms) FROM schedule_bookings b WHERE b.link_id = l.id AND b.start_ms >= ?)"
                        " FROM schedule_links l WHERE %1"_s;

QJsonObject linkFrom(const QSqlQuery &q, const QString &pages)
{
    return { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
        { u"duration"_s, q.value(2).toLongLong() }, { u"url"_s, QString(pages + u"/book/"_s + q.value(3).toString()) },
        { u"bookings"_s, q.value(4).toLongLong() },
        { u"next_at"_s, q.value(5).isNull() ? QJsonValue() : QJsonValue(isoTime(q.value(5).toLongLong())) } };
}

std::optional<qint64> instant(const QString &iso)
{
    const QDateTime at = QDateTime::fromString(iso, Qt::ISODateWithMs);
    return at.isValid() ? std::optional(at.toMSecsSinceEpoch()) : std::nullopt;
}

} // namespace

const QString ScheduleStore::rangeRefusal = u"A range ends after it starts and spans at most 62 days."_s;

std::optional<ScheduleStore::Range> ScheduleStore::readRange(const QString &fromText, const QString &toText)
{
    const std::optional<qint64> from = instant(fromText);
    const std::optional<qint64> to = instant(toText);
    if (!from || !to || *to <= *from || *to - *from > longestRangeDays * 24 * 60 * minuteMs)
        return std::nullopt;
    return Range { *from, *to };
}

ScheduleStore::ScheduleStore(WorkspaceStore &store, QString pages)
    : m_store(store)
    , m_pages(std::move(pages))
{
}

bool ScheduleStore::createSchema()
{
    return BooksSql::runAll(m_store.database(), schema);
}

bool ScheduleStore::mayUse(const QString &me) const
{
    return m_store.opens(me, scheduleApp);
}

bool ScheduleStore::hasEventsInWeekOf(const QDate &monday) const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM schedule_events WHERE start_ms >= ? AND start_ms < ?"_s,
               { monday.startOfDay().toMSecsSinceEpoch(), monday.addDays(7).startOfDay().toMSecsSinceEpoch() })
        > 0;
}

WorkspaceReply ScheduleStore::events(const QString &me, const QString &fromText, const QString &toText) const
{
    const std::optional<Range> range = readRange(fromText, toText);
    if (!range)
        return WorkspaceReply::error(400, rangeRefusal);
    QSqlQuery q = run(m_store.database(),
        u"SELECT e.id, e.title, e.start_ms, e.end_ms, e.all_day, e.kind, e.location, c.name FROM schedule_events e"
        " LEFT JOIN clients c ON c.id = e.client_id WHERE e.person_id = ? AND e.end_ms > ? AND e.start_ms < ?"
        " UNION ALL"
        " SELECT b.id, b.name || ' (' || l.title || ')', b.start_ms, b.start_ms + l.duration * 60000, 0, 'booking',"
        " NULL, NULL FROM schedule_bookings b JOIN schedule_links l ON l.id = b.link_id"
        " WHERE l.person_id = ? AND b.start_ms + l.duration * 60000 > ? AND b.start_ms < ?"
        " ORDER BY 3, 2"_s,
        { me, range->from, range->to, me, range->from, range->to });
    QJsonArray answer;
    while (q.next()) {
        answer.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
            { u"start_at"_s, isoTime(q.value(2).toLongLong()) }, { u"end_at"_s, isoTime(q.value(3).toLongLong()) },
            { u"all_day"_s, q.value(4).toBool() }, { u"kind"_s, q.value(5).toString() },
            { u"location"_s, optionalText(q.value(6)) }, { u"client_name"_s, optionalText(q.value(7)) },
            { u"calendar"_s, u"workspace"_s } });
    }
    return WorkspaceReply::json(answer);
}

QJsonObject ScheduleStore::linkObject(const QString &id) const
{
    QSqlQuery q = run(m_store.database(), linkSql.arg(u"l.id = ?"_s), { nowMs(), nowMs(), id });
    return q.next() ? linkFrom(q, m_pages) : QJsonObject();
}

WorkspaceReply ScheduleStore::links(const QString &me) const
{
    QSqlQuery q = run(m_store.database(), linkSql.arg(u"l.person_id = ?"_s) + u" ORDER BY l.created_at DESC, l.id"_s,
        { nowMs(), nowMs(), me });
    QJsonArray answer;
    while (q.next())
        answer.append(linkFrom(q, m_pages));
    return WorkspaceReply::json(answer);
}

WorkspaceReply ScheduleStore::createLink(const QString &me, const QJsonObject &body)
{
    const QString title = body.value(u"title"_s).toString().simplified();
    const qint64 duration = body.value(u"duration"_s).toInteger();
    if (title.isEmpty() || title.size() > longestTitle)
        return WorkspaceReply::error(400, u"A link's title is 1 to 100 characters."_s);
    if (duration < shortestBooking || duration > longestBooking)
        return WorkspaceReply::error(400, u"A booking lasts from 15 minutes to 4 hours."_s);
    return WorkspaceReply::json(linkObject(addLink(me, title, duration)), 201);
}

WorkspaceReply ScheduleStore::bookings(const QString &me, const QString &linkId) const
{
    if (single(
            m_store.database(), u"SELECT COUNT(*) FROM schedule_links WHERE id = ? AND person_id = ?"_s, { linkId, me })
        == 0)
        return WorkspaceReply::error(404, u"No such booking link."_s);
    QSqlQuery q = run(m_store.database(),
        u"SELECT id, name, email, start_ms, note FROM schedule_bookings WHERE link_id = ? AND start_ms >= ?"
        " ORDER BY start_ms"_s,
        { linkId, nowMs() });
    QJsonArray answer;
    while (q.next()) {
        answer.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
            { u"email"_s, q.value(2).toString() }, { u"start_at"_s, isoTime(q.value(3).toLongLong()) },
            { u"note"_s, optionalText(q.value(4)) } });
    }
    return WorkspaceReply::json(answer);
}

void ScheduleStore::addEvent(const Event &event)
{
    run(m_store.database(),
        u"INSERT INTO schedule_events (id, person_id, title, start_ms, end_ms, all_day, kind, location, client_id)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { newID("ev-"_L1), event.personId, event.title, event.startMs, event.endMs, event.allDay ? 1 : 0, event.kind,
            orNull(event.location), orNull(event.clientId) });
}

QString ScheduleStore::addLink(const QString &personId, const QString &title, qint64 duration)
{
    const QString id = newID("bl-"_L1);
    run(m_store.database(),
        u"INSERT INTO schedule_links (id, person_id, title, slug, duration, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, personId, title, slugFor(title), duration, nowMs() });
    return id;
}

void ScheduleStore::addBooking(
    const QString &linkId, const QString &name, const QString &email, qint64 startMs, const QString &note)
{
    run(m_store.database(),
        u"INSERT INTO schedule_bookings (id, link_id, name, email, start_ms, note) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { newID("bk-"_L1), linkId, name, email, startMs, orNull(note) });
}
