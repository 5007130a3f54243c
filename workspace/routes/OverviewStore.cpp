#include "workspace/routes/OverviewStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDate>
#include <QDateTime>
#include <QHash>
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
using BooksSql::text;

namespace {

const QString overviewApp = u"Overview"_s;

const char *const schema[] = {
    // `stages` in order, joined by newlines.
    "CREATE TABLE IF NOT EXISTS overview_boards ("
    " id TEXT PRIMARY KEY, name TEXT NOT NULL, position INTEGER NOT NULL, stages TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS overview_items ("
    " id TEXT PRIMARY KEY, board_id TEXT NOT NULL REFERENCES overview_boards(id), stage TEXT NOT NULL,"
    " title TEXT NOT NULL, client_id TEXT REFERENCES clients(id), owner_id TEXT REFERENCES people(id),"
    " due_date TEXT, version INTEGER NOT NULL DEFAULT 1, moved_by TEXT REFERENCES people(id),"
    " position INTEGER NOT NULL)",
    // `status` packing, shipped or delivered; `eta` a day.
    "CREATE TABLE IF NOT EXISTS overview_orders ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), summary TEXT NOT NULL,"
    " status TEXT NOT NULL, carrier TEXT, tracking TEXT, eta TEXT NOT NULL, updated_at INTEGER NOT NULL)",
};

// A board item's columns, `%1` the condition; its board is the eighth.
const QString itemSql = u"SELECT i.id, i.title, i.stage, c.name, p.name, i.due_date, i.version, i.board_id"
                        " FROM overview_items i LEFT JOIN clients c ON c.id = i.client_id"
                        " LEFT JOIN people p ON p.id = i.owner_id WHERE %1"_s;

QJsonObject itemFrom(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
        { u"stage"_s, q.value(2).toString() }, { u"client_name"_s, optionalText(q.value(3)) },
        { u"owner_name"_s, optionalText(q.value(4)) }, { u"due_date"_s, optionalText(q.value(5)) },
        { u"version"_s, q.value(6).toLongLong() } };
}

QString trackingNumber()
{
    return QString(u"PW"_s + newID(""_L1).left(10)).toUpper();
}

} // namespace

OverviewStore::OverviewStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool OverviewStore::createSchema()
{
    return BooksSql::runAll(m_store.database(), schema);
}

bool OverviewStore::mayUse(const QString &me) const
{
    return m_store.opens(me, overviewApp);
}

bool OverviewStore::hasBoards() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM overview_boards"_s) > 0;
}

WorkspaceReply OverviewStore::team() const
{
    const qint64 now = nowMs();
    const qint64 midnight = QDate::currentDate().addDays(1).startOfDay().toMSecsSinceEpoch();
    QSqlQuery q = run(m_store.database(),
        u"SELECT p.id, p.name, p.role,"
        " EXISTS (SELECT 1 FROM people_time_entries e WHERE e.person_id = p.id AND e.clock_out IS NULL),"
        " (SELECT t.title FROM support_tasks t WHERE t.assignee_id = p.id AND t.status = 'in_progress'"
        "  ORDER BY t.updated_at DESC LIMIT 1),"
        " (SELECT c.name FROM support_tasks t JOIN clients c ON c.id = t.client_id WHERE t.assignee_id = p.id"
        "  AND t.status = 'in_progress' ORDER BY t.updated_at DESC LIMIT 1),"
        " (SELECT COUNT(*) FROM support_tasks t WHERE t.assignee_id = p.id AND t.status != 'done'),"
        " (SELECT v.title FROM schedule_events v WHERE v.person_id = p.id AND v.all_day = 0 AND v.start_ms >= ?"
        "  AND v.start_ms < ? ORDER BY v.start_ms LIMIT 1),"
        " (SELECT v.start_ms FROM schedule_events v WHERE v.person_id = p.id AND v.all_day = 0 AND v.start_ms >= ?"
        "  AND v.start_ms < ? ORDER BY v.start_ms LIMIT 1)"
        " FROM people p ORDER BY p.position"_s,
        { now, midnight, now, midnight });
    QJsonArray answer;
    while (q.next()) {
        answer.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
            { u"role"_s, q.value(2).toString() }, { u"clocked_in"_s, q.value(3).toBool() },
            { u"working_on"_s, optionalText(q.value(4)) }, { u"working_for"_s, optionalText(q.value(5)) },
            { u"open_tasks"_s, q.value(6).toLongLong() }, { u"next_event"_s, optionalText(q.value(7)) },
            { u"next_at"_s, q.value(8).isNull() ? QJsonValue() : QJsonValue(isoTime(q.value(8).toLongLong())) } });
    }
    return WorkspaceReply::json(answer);
}

QJsonObject OverviewStore::itemObject(const QString &id) const
{
    QSqlQuery q = run(m_store.database(), itemSql.arg(u"i.id = ?"_s), { id });
    return q.next() ? itemFrom(q) : QJsonObject();
}

WorkspaceReply OverviewStore::boards() const
{
    const QSqlDatabase db = m_store.database();
    // Every board's items in one reading, then each board with its own.
    QHash<QString, QJsonArray> items;
    QSqlQuery rows = run(db, itemSql.arg(u"1"_s) + u" ORDER BY i.position, i.id"_s);
    while (rows.next())
        items[rows.value(7).toString()].append(itemFrom(rows));
    QSqlQuery q = run(db, u"SELECT id, name, stages FROM overview_boards ORDER BY position"_s);
    QJsonArray answer;
    while (q.next()) {
        answer.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
            { u"stages"_s, QJsonArray::fromStringList(q.value(2).toString().split(u'\n')) },
            { u"items"_s, items.value(q.value(0).toString()) } });
    }
    return WorkspaceReply::json(answer);
}

WorkspaceReply OverviewStore::moveItem(const QString &me, const QString &id, const QJsonObject &body)
{
    const QSqlDatabase db = m_store.database();
    const QString stages = text(db,
        u"SELECT b.stages FROM overview_items i JOIN overview_boards b ON b.id = i.board_id WHERE i.id = ?"_s, { id });
    if (stages.isEmpty())
        return WorkspaceReply::error(404, u"No such item."_s);
    const QString stage = body.value(u"stage"_s).toString();
    if (!stages.split(u'\n').contains(stage))
        return WorkspaceReply::error(400, u"That board has no stage \u201c%1\u201d."_s.arg(stage));
    const qint64 version = body.value(u"version"_s).toInteger(-1);
    const qint64 current = single(db, u"SELECT version FROM overview_items WHERE id = ?"_s, { id });
    if (version != current) {
        const QString who = text(
            db, u"SELECT p.name FROM overview_items i JOIN people p ON p.id = i.moved_by WHERE i.id = ?"_s, { id });
        return WorkspaceReply::json(
            QJsonObject { { u"error"_s,
                              u"%1 moved this in the meantime; it now shows where they put it."_s.arg(
                                  who.isEmpty() ? u"Someone"_s : who) },
                { u"item"_s, itemObject(id) } },
            409);
    }
    run(db, u"UPDATE overview_items SET stage = ?, version = version + 1, moved_by = ? WHERE id = ?"_s,
        { stage, me, id });
    return WorkspaceReply::json(itemObject(id));
}

QJsonObject OverviewStore::orderObject(const QString &id) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT o.id, c.name, o.summary, o.status, o.carrier, o.tracking, o.eta, o.updated_at FROM overview_orders o"
        " JOIN clients c ON c.id = o.client_id WHERE o.id = ?"_s,
        { id });
    if (!q.next())
        return {};
    return { { u"id"_s, q.value(0).toString() }, { u"client_name"_s, q.value(1).toString() },
        { u"summary"_s, q.value(2).toString() }, { u"status"_s, q.value(3).toString() },
        { u"carrier"_s, optionalText(q.value(4)) }, { u"tracking"_s, optionalText(q.value(5)) },
        { u"eta"_s, q.value(6).toString() }, { u"updated_at"_s, isoTime(q.value(7).toLongLong()) } };
}

WorkspaceReply OverviewStore::orders() const
{
    const qint64 weekAgo = nowMs() - 7LL * 24 * 3600 * 1000;
    QSqlQuery q = run(m_store.database(),
        u"SELECT id FROM overview_orders WHERE status != 'delivered' OR updated_at >= ? ORDER BY eta, id"_s,
        { weekAgo });
    QJsonArray answer;
    while (q.next())
        answer.append(orderObject(q.value(0).toString()));
    return WorkspaceReply::json(answer);
}

WorkspaceReply OverviewStore::advanceOrder(const QString &id)
{
    const QSqlDatabase db = m_store.database();
    const QString status = text(db, u"SELECT status FROM overview_orders WHERE id = ?"_s, { id });
    if (status.isEmpty())
        return WorkspaceReply::error(404, u"No such order."_s);
    if (status == "delivered"_L1)
        return WorkspaceReply::error(400, u"This order has been delivered."_s);
    if (status == "packing"_L1) {
        // Shipping gives it a carrier and a tracking number when it has none.
        run(db,
            u"UPDATE overview_orders SET status = 'shipped', carrier = COALESCE(carrier, 'Parcelway'),"
            " tracking = COALESCE(tracking, ?), updated_at = ? WHERE id = ?"_s,
            { trackingNumber(), nowMs(), id });
    } else {
        run(db, u"UPDATE overview_orders SET status = 'delivered', updated_at = ? WHERE id = ?"_s, { nowMs(), id });
    }
    return WorkspaceReply::json(orderObject(id));
}

QString OverviewStore::addBoard(const QString &name, const QStringList &stages)
{
    const QString id = newID("pb-"_L1);
    run(m_store.database(), u"INSERT INTO overview_boards (id, name, position, stages) VALUES (?, ?, ?, ?)"_s,
        { id, name, single(m_store.database(), u"SELECT COUNT(*) FROM overview_boards"_s), stages.join(u'\n') });
    return id;
}

void OverviewStore::addItem(const QString &boardId, const QString &stage, const QString &title, const QString &clientId,
    const QString &ownerId, const QString &dueDate)
{
    run(m_store.database(),
        u"INSERT INTO overview_items (id, board_id, stage, title, client_id, owner_id, due_date, position)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, (SELECT COUNT(*) FROM overview_items))"_s,
        { newID("pi-"_L1), boardId, stage, title, orNull(clientId), orNull(ownerId), orNull(dueDate) });
}

void OverviewStore::addOrder(
    const QString &clientId, const QString &summary, const QString &status, const QString &carrier, const QString &eta)
{
    run(m_store.database(),
        u"INSERT INTO overview_orders (id, client_id, summary, status, carrier, tracking, eta, updated_at)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { newID("po-"_L1), clientId, summary, status, orNull(carrier),
            carrier.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(trackingNumber()), eta, nowMs() });
}
