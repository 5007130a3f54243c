#include "workspace/routes/SupportStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlQuery>
#include <QUrl>

#include <algorithm>

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

const QString supportApp = u"Support"_s;
const QStringList statuses { u"todo"_s, u"in_progress"_s, u"waiting"_s, u"done"_s };
const QStringList priorities { u"low"_s, u"normal"_s, u"high"_s, u"urgent"_s };
const QStringList repeats { u"week"_s, u"month"_s, u"quarter"_s };

QString statusLabel(const QString &status)
{
    static const QStringList labels { u"To do"_s, u"In progress"_s, u"Waiting"_s, u"Done"_s };
    const qsizetype at = statuses.indexOf(status);
    return at < 0 ? status : labels.at(at);
}

// One query for every place a task is listed; `%1` is the WHERE clause.
const QString summarySql = u"SELECT t.id, t.title, t.status, t.priority, t.client_id, c.name, t.assignee_id, p.name,"
                           " t.due_date, t.recurring_id, t.version, t.updated_at, t.parent_id,"
                           " (SELECT COUNT(*) FROM support_tasks s WHERE s.parent_id = t.id),"
                           " (SELECT COUNT(*) FROM support_tasks s WHERE s.parent_id = t.id AND s.status = 'done'),"
                           " (SELECT COUNT(*) FROM support_comments m WHERE m.task_id = t.id),"
                           " (SELECT COALESCE(SUM(minutes), 0) FROM support_time l WHERE l.task_id = t.id)"
                           " FROM support_tasks t LEFT JOIN clients c ON c.id = t.client_id"
                           " LEFT JOIN people p ON p.id = t.assignee_id WHERE %1"_s;

QJsonObject summaryFrom(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
        { u"status"_s, q.value(2).toString() }, { u"priority"_s, q.value(3).toString() },
        { u"client_id"_s, optionalText(q.value(4)) }, { u"client_name"_s, optionalText(q.value(5)) },
        { u"assignee_id"_s, optionalText(q.value(6)) }, { u"assignee_name"_s, optionalText(q.value(7)) },
        { u"due_date"_s, optionalText(q.value(8)) }, { u"recurring_id"_s, optionalText(q.value(9)) },
        { u"version"_s, q.value(10).toLongLong() }, { u"updated_at"_s, isoTime(q.value(11).toLongLong()) },
        { u"parent_id"_s, optionalText(q.value(12)) }, { u"subtask_count"_s, q.value(13).toLongLong() },
        { u"subtasks_done"_s, q.value(14).toLongLong() }, { u"comment_count"_s, q.value(15).toLongLong() },
        { u"logged_minutes"_s, q.value(16).toLongLong() } };
}

QJsonArray summaries(const QSqlDatabase &db, const QString &where, const QVariantList &values, const QString &order)
{
    QSqlQuery q = run(db, summarySql.arg(where) + u" ORDER BY "_s + order, values);
    QJsonArray out;
    while (q.next())
        out.append(summaryFrom(q));
    return out;
}

QJsonArray notes(const QSqlDatabase &db, const char *table, const char *key, const QString &id)
{
    QSqlQuery q = run(db,
        u"SELECT n.id, n.author_id, p.name, n.body, n.created_at FROM %1 n JOIN people p ON p.id = n.author_id"
        " WHERE n.%2 = ? ORDER BY n.created_at, n.id"_s.arg(QLatin1StringView(table), QLatin1StringView(key)),
        { id });
    QJsonArray out;
    while (q.next())
        out.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"author_id"_s, q.value(1).toString() },
            { u"author_name"_s, q.value(2).toString() }, { u"body"_s, q.value(3).toString() },
            { u"created_at"_s, isoTime(q.value(4).toLongLong()) } });
    return out;
}

// Time entries: `%1` is the WHERE clause.
QJsonArray timeEntries(const QSqlDatabase &db, const QString &where, const QVariantList &values)
{
    QSqlQuery q = run(db,
        u"SELECT l.id, l.task_id, t.title, l.person_id, p.name, l.minutes, l.day, l.note FROM support_time l"
        " JOIN support_tasks t ON t.id = l.task_id JOIN people p ON p.id = l.person_id WHERE %1"
        " ORDER BY l.day DESC, l.created_at DESC LIMIT 500"_s.arg(where),
        values);
    QJsonArray out;
    while (q.next())
        out.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"task_id"_s, q.value(1).toString() },
            { u"task_title"_s, q.value(2).toString() }, { u"person_id"_s, q.value(3).toString() },
            { u"person_name"_s, q.value(4).toString() }, { u"minutes"_s, q.value(5).toLongLong() },
            { u"day"_s, q.value(6).toString() }, { u"note"_s, q.value(7).toString() } });
    return out;
}

WorkspaceReply noTask()
{
    return WorkspaceReply::error(404, u"No such task."_s);
}

WorkspaceReply created(const QString &id)
{
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } });
}

QString field(const QJsonObject &body, QLatin1StringView key)
{
    return body.value(key).toString().trimmed();
}

} // namespace

SupportStore::SupportStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool SupportStore::mayUse(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->apps.contains(supportApp);
}

bool SupportStore::hasTasks() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM support_tasks"_s) > 0;
}

bool SupportStore::exists(const char *table, const QString &id) const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM %1 WHERE id = ?"_s.arg(QLatin1StringView(table)), { id })
        > 0;
}

QJsonObject SupportStore::summary(const QString &id) const
{
    QSqlQuery q = run(m_store.database(), summarySql.arg(u"t.id = ?"_s), { id });
    return q.next() ? summaryFrom(q) : QJsonObject();
}

QJsonValue SupportStore::timerOf(const QString &me) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT r.task_id, t.title, r.started_at FROM support_timers r JOIN support_tasks t ON t.id = r.task_id"
        " WHERE r.person_id = ?"_s,
        { me });
    if (!q.next())
        return QJsonValue::Null;
    return QJsonObject { { u"task_id"_s, q.value(0).toString() }, { u"task_title"_s, q.value(1).toString() },
        { u"started_at"_s, isoTime(q.value(2).toLongLong()) } };
}

WorkspaceReply SupportStore::board(const QString &me)
{
    const QSqlDatabase db = m_store.database();
    const qint64 monthAgo = nowMs() - 30LL * 24 * 3600 * 1000;
    QJsonArray people;
    for (const WorkspacePerson &person : m_store.people())
        if (person.apps.contains(supportApp))
            people.append(QJsonObject { { u"id"_s, person.id }, { u"name"_s, person.name } });
    QJsonArray clients;
    QSqlQuery c = run(db, u"SELECT id, name FROM clients ORDER BY name, id"_s);
    while (c.next())
        clients.append(QJsonObject { { u"id"_s, c.value(0).toString() }, { u"name"_s, c.value(1).toString() } });
    QJsonArray views;
    QSqlQuery v
        = run(db, u"SELECT id, name, filters FROM support_views WHERE person_id = ? ORDER BY created_at, id"_s, { me });
    while (v.next())
        views.append(QJsonObject { { u"id"_s, v.value(0).toString() }, { u"name"_s, v.value(1).toString() },
            { u"filters"_s, QJsonDocument::fromJson(v.value(2).toByteArray()).object() } });
    QJsonArray recurring;
    QSqlQuery r = run(db,
        u"SELECT r.id, r.title, r.client_id, c.name, r.assignee_id, p.name, r.priority, r.every, r.active,"
        " (SELECT MIN(t.due_date) FROM support_tasks t WHERE t.recurring_id = r.id AND t.status != 'done')"
        " FROM support_recurring r LEFT JOIN clients c ON c.id = r.client_id LEFT JOIN people p ON p.id = r.assignee_id"
        " ORDER BY r.active DESC, r.title, r.id"_s);
    while (r.next())
        recurring.append(QJsonObject { { u"id"_s, r.value(0).toString() }, { u"title"_s, r.value(1).toString() },
            { u"client_id"_s, optionalText(r.value(2)) }, { u"client_name"_s, optionalText(r.value(3)) },
            { u"assignee_id"_s, optionalText(r.value(4)) }, { u"assignee_name"_s, optionalText(r.value(5)) },
            { u"priority"_s, r.value(6).toString() }, { u"every"_s, r.value(7).toString() },
            { u"active"_s, r.value(8).toBool() }, { u"next_due"_s, optionalText(r.value(9)) } });
    // Done work leaves the board after a month; the rest stays however old.
    return WorkspaceReply::json(
        QJsonObject { { u"tasks"_s,
                          summaries(db, u"t.parent_id IS NULL AND (t.status != 'done' OR t.updated_at >= ?)"_s,
                              { monthAgo }, u"t.due_date IS NULL, t.due_date, t.created_at, t.id"_s) },
            { u"people"_s, people }, { u"clients"_s, clients }, { u"views"_s, views }, { u"recurring"_s, recurring },
            { u"timer"_s, timerOf(me) },
            { u"time_entries"_s,
                timeEntries(db, u"l.day >= ?"_s, { QDate::currentDate().addDays(-30).toString(Qt::ISODate) }) } });
}

WorkspaceReply SupportStore::task(const QString &id)
{
    const QJsonObject task = summary(id);
    if (task.isEmpty())
        return noTask();
    const QSqlDatabase db = m_store.database();
    QJsonArray files;
    QSqlQuery f = run(db,
        u"SELECT f.id, f.name, length(f.data), p.name, f.created_at FROM support_files f"
        " JOIN people p ON p.id = f.uploaded_by WHERE f.task_id = ? ORDER BY f.created_at, f.id"_s,
        { id });
    while (f.next())
        files.append(QJsonObject { { u"id"_s, f.value(0).toString() }, { u"name"_s, f.value(1).toString() },
            { u"size"_s, f.value(2).toLongLong() }, { u"uploaded_by_name"_s, f.value(3).toString() },
            { u"created_at"_s, isoTime(f.value(4).toLongLong()) } });
    QJsonArray timers;
    QSqlQuery r = run(db,
        u"SELECT r.person_id, p.name, r.started_at FROM support_timers r JOIN people p ON p.id = r.person_id"
        " WHERE r.task_id = ? ORDER BY r.started_at"_s,
        { id });
    while (r.next())
        timers.append(QJsonObject { { u"person_id"_s, r.value(0).toString() },
            { u"person_name"_s, r.value(1).toString() }, { u"started_at"_s, isoTime(r.value(2).toLongLong()) } });
    return WorkspaceReply::json(QJsonObject { { u"task"_s, task },
        { u"description"_s, text(db, u"SELECT description FROM support_tasks WHERE id = ?"_s, { id }) },
        { u"subtasks"_s, summaries(db, u"t.parent_id = ?"_s, { id }, u"t.created_at, t.id"_s) },
        { u"comments"_s, notes(db, "support_comments", "task_id", id) }, { u"files"_s, files },
        { u"time_entries"_s, timeEntries(db, u"l.task_id = ?"_s, { id }) }, { u"running_timers"_s, timers } });
}

WorkspaceReply SupportStore::createTask(const QString &me, const QJsonObject &body)
{
    Q_UNUSED(me)
    NewTask task { .title = field(body, "title"_L1),
        .status = body.contains("status"_L1) ? field(body, "status"_L1) : u"todo"_s,
        .priority = body.contains("priority"_L1) ? field(body, "priority"_L1) : u"normal"_s,
        .clientId = field(body, "client_id"_L1),
        .assigneeId = field(body, "assignee_id"_L1),
        .due = QDate::fromString(field(body, "due_date"_L1), Qt::ISODate),
        .parentId = field(body, "parent_id"_L1),
        .recurringId = {},
        .description = body.value("description"_L1).toString() };
    if (task.title.isEmpty())
        return WorkspaceReply::error(400, u"A task needs a title."_s);
    if (!statuses.contains(task.status))
        return WorkspaceReply::error(400, u"\"status\" is one of todo, in_progress, waiting, done."_s);
    if (!priorities.contains(task.priority))
        return WorkspaceReply::error(400, u"\"priority\" is one of low, normal, high, urgent."_s);
    if (!field(body, "due_date"_L1).isEmpty() && !task.due.isValid())
        return WorkspaceReply::error(400, u"\"due_date\" is a day such as 2026-03-31."_s);
    if (!task.clientId.isEmpty() && !exists("clients", task.clientId))
        return WorkspaceReply::error(400, u"No such customer."_s);
    if (!task.assigneeId.isEmpty() && !mayUse(task.assigneeId))
        return WorkspaceReply::error(400, u"That person does not work on the support board."_s);
    if (!task.parentId.isEmpty() && !exists("support_tasks", task.parentId))
        return noTask();
    return created(addTask(task, nowMs()));
}

WorkspaceReply SupportStore::createSubtask(const QString &me, const QString &parent, const QString &title)
{
    const QSqlDatabase db = m_store.database();
    QSqlQuery q = run(db, u"SELECT client_id, assignee_id, parent_id FROM support_tasks WHERE id = ?"_s, { parent });
    if (!q.next())
        return noTask();
    if (!q.value(2).isNull())
        return WorkspaceReply::error(400, u"A subtask cannot have subtasks of its own."_s);
    QJsonObject body { { u"title"_s, title }, { u"parent_id"_s, parent }, { u"client_id"_s, q.value(0).toString() },
        { u"assignee_id"_s, q.value(1).toString() } };
    return createTask(me, body);
}

WorkspaceReply SupportStore::updateTask(const QString &me, const QString &id, const QJsonObject &body)
{
    Q_UNUSED(me)
    const QSqlDatabase db = m_store.database();
    QSqlQuery q = run(db, u"SELECT version, status FROM support_tasks WHERE id = ?"_s, { id });
    if (!q.next())
        return noTask();
    if (!body.value("version"_L1).isDouble())
        return WorkspaceReply::error(400, u"A change says which \"version\" of the task it was made on."_s);
    const QString before = q.value(1).toString();
    if (body.value("version"_L1).toInteger() != q.value(0).toLongLong()) {
        const QJsonObject current = summary(id);
        QString message = u"Someone changed this task in the meantime: it is now in “%1”"_s.arg(statusLabel(before));
        if (!current.value("assignee_name"_L1).isNull())
            message += u", with %1"_s.arg(current.value("assignee_name"_L1).toString());
        message += u". Nothing of your change was saved."_s;
        return WorkspaceReply::json(QJsonObject { { u"error"_s, message }, { u"task"_s, current } }, 409);
    }

    QStringList sets;
    QVariantList values;
    const auto set = [&](const char *column, const QVariant &value) {
        sets.append(QLatin1StringView(column) + u" = ?"_s);
        values.append(value);
    };
    if (body.contains("title"_L1)) {
        if (field(body, "title"_L1).isEmpty())
            return WorkspaceReply::error(400, u"A task needs a title."_s);
        set("title", field(body, "title"_L1));
    }
    if (body.contains("description"_L1))
        set("description", body.value("description"_L1).toString());
    if (body.contains("status"_L1)) {
        if (!statuses.contains(field(body, "status"_L1)))
            return WorkspaceReply::error(400, u"\"status\" is one of todo, in_progress, waiting, done."_s);
        set("status", field(body, "status"_L1));
    }
    if (body.contains("priority"_L1)) {
        if (!priorities.contains(field(body, "priority"_L1)))
            return WorkspaceReply::error(400, u"\"priority\" is one of low, normal, high, urgent."_s);
        set("priority", field(body, "priority"_L1));
    }
    if (body.contains("due_date"_L1)) {
        const QString due = field(body, "due_date"_L1);
        if (!due.isEmpty() && !QDate::fromString(due, Qt::ISODate).isValid())
            return WorkspaceReply::error(400, u"\"due_date\" is a day such as 2026-03-31."_s);
        set("due_date", orNull(due));
    }
    if (body.contains("assignee_id"_L1)) {
        const QString assignee = field(body, "assignee_id"_L1);
        if (!assignee.isEmpty() && !mayUse(assignee))
            return WorkspaceReply::error(400, u"That person does not work on the support board."_s);
        set("assignee_id", orNull(assignee));
    }
    if (body.contains("client_id"_L1)) {
        const QString client = field(body, "client_id"_L1);
        if (!client.isEmpty() && !exists("clients", client))
            return WorkspaceReply::error(400, u"No such customer."_s);
        set("client_id", orNull(client));
    }
    set("updated_at", nowMs());
    values.append(id);
    run(db, u"UPDATE support_tasks SET %1, version = version + 1 WHERE id = ?"_s.arg(sets.join(", "_L1)), values);
    if (before != "done"_L1 && field(body, "status"_L1) == "done"_L1)
        makeNextOccurrence(id);
    return WorkspaceReply::json(summary(id));
}

QDate SupportStore::nextOccurrence(const QDate &from, const QString &every)
{
    if (every == "week"_L1)
        return from.addDays(7);
    if (every == "quarter"_L1)
        return from.addMonths(3);
    return from.addMonths(1);
}

void SupportStore::makeNextOccurrence(const QString &task)
{
    const QSqlDatabase db = m_store.database();
    QSqlQuery q = run(db,
        u"SELECT r.id, r.title, r.client_id, r.assignee_id, r.priority, r.every, COALESCE(t.occurrence, t.due_date)"
        " FROM support_tasks t JOIN support_recurring r ON r.id = t.recurring_id WHERE t.id = ? AND r.active = 1"_s,
        { task });
    if (!q.next())
        return;
    const QDate from = QDate::fromString(q.value(6).toString(), Qt::ISODate);
    const QDate next = nextOccurrence(from.isValid() ? from : QDate::currentDate(), q.value(5).toString());
    // The rule and the day are unique together: a task completed, reopened
    // and completed again leaves one next task, not two.
    const qint64 now = nowMs();
    run(db,
        u"INSERT OR IGNORE INTO support_tasks (id, title, status, priority, client_id, assignee_id, due_date,"
        " recurring_id, occurrence, created_at, updated_at) VALUES (?, ?, 'todo', ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { newID("st-"_L1), q.value(1), q.value(4), q.value(2), q.value(3), next.toString(Qt::ISODate), q.value(0),
            next.toString(Qt::ISODate), now, now });
}

WorkspaceReply SupportStore::addComment(const QString &me, const QString &task, const QString &body)
{
    if (!exists("support_tasks", task))
        return noTask();
    if (body.trimmed().isEmpty())
        return WorkspaceReply::error(400, u"A comment needs text."_s);
    const QString id = newID("sc-"_L1);
    run(m_store.database(),
        u"INSERT INTO support_comments (id, task_id, author_id, body, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { id, task, me, body.trimmed(), nowMs() });
    return created(id);
}

WorkspaceReply SupportStore::attachFile(const QString &me, const QString &task, const QJsonObject &body)
{
    if (!exists("support_tasks", task))
        return noTask();
    const QString name = field(body, "name"_L1);
    if (name.isEmpty() || name.contains(u'/'))
        return WorkspaceReply::error(400, u"A file needs a name without \"/\"."_s);
    const auto decoded = QByteArray::fromBase64Encoding(
        body.value("data"_L1).toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return WorkspaceReply::error(400, u"\"data\" is the file in base64."_s);
    if (decoded.decoded.size() > fileLimit)
        return WorkspaceReply::error(413, u"“%1” is larger than 5 MB, the most a task's file may be."_s.arg(name));
    const QString id = newID("sf-"_L1);
    run(m_store.database(),
        u"INSERT INTO support_files (id, task_id, name, data, uploaded_by, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, task, name, decoded.decoded, me, nowMs() });
    return created(id);
}

WorkspaceReply SupportStore::file(const QString &id)
{
    QSqlQuery q = run(m_store.database(), u"SELECT name, data FROM support_files WHERE id = ?"_s, { id });
    if (!q.next())
        return WorkspaceReply::error(404, u"No such file."_s);
    return { .status = 200,
        .contentType = "application/octet-stream",
        .body = q.value(1).toByteArray(),
        .headers = { { "Content-Disposition",
            "attachment; filename*=UTF-8''" + QUrl::toPercentEncoding(q.value(0).toString()) } } };
}

QJsonObject SupportStore::stopTimer(const QString &me)
{
    const QSqlDatabase db = m_store.database();
    QSqlQuery q = run(db, u"SELECT task_id, started_at FROM support_timers WHERE person_id = ?"_s, { me });
    if (!q.next())
        return {};
    const QString task = q.value(0).toString();
    const qint64 started = q.value(1).toLongLong();
    run(db, u"DELETE FROM support_timers WHERE person_id = ?"_s, { me });
    // A timer stopped within its first minute still logs one.
    const int minutes = static_cast<int>(std::max<qint64>(1, (nowMs() - started + 30'000) / 60'000));
    const QString id = addTime(task, me, minutes, QDate::currentDate(), QString());
    return timeEntries(db, u"l.id = ?"_s, { id }).first().toObject();
}

WorkspaceReply SupportStore::trackTime(const QString &me, const QString &task, const QString &action)
{
    if (!exists("support_tasks", task))
        return noTask();
    const QSqlDatabase db = m_store.database();
    QJsonObject logged;
    if (action == "start"_L1) {
        const QString running = text(db, u"SELECT task_id FROM support_timers WHERE person_id = ?"_s, { me });
        if (running != task) {
            logged = stopTimer(me);
            run(db, u"INSERT INTO support_timers (person_id, task_id, started_at) VALUES (?, ?, ?)"_s,
                { me, task, nowMs() });
        }
    } else if (action == "stop"_L1) {
        if (text(db, u"SELECT task_id FROM support_timers WHERE person_id = ?"_s, { me }) != task)
            return WorkspaceReply::error(409, u"Your timer is not running on this task."_s);
        logged = stopTimer(me);
    } else {
        return WorkspaceReply::error(400, u"\"action\" is \"start\" or \"stop\"."_s);
    }
    return WorkspaceReply::json(QJsonObject { { u"timer"_s, timerOf(me) },
        { u"logged"_s, logged.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(logged) } });
}

WorkspaceReply SupportStore::logTime(const QString &me, const QString &task, const QJsonObject &body)
{
    if (!exists("support_tasks", task))
        return noTask();
    const qint64 minutes = body.value("minutes"_L1).toInteger();
    if (minutes <= 0 || minutes > 24 * 60)
        return WorkspaceReply::error(400, u"Log between 1 minute and 24 hours."_s);
    const QDate day = QDate::fromString(field(body, "day"_L1), Qt::ISODate);
    if (!day.isValid())
        return WorkspaceReply::error(400, u"\"day\" is a day such as 2026-03-31."_s);
    if (day > QDate::currentDate())
        return WorkspaceReply::error(400, u"Time cannot be logged on a day still to come."_s);
    return created(addTime(task, me, static_cast<int>(minutes), day, field(body, "note"_L1)));
}

WorkspaceReply SupportStore::addRecurring(const QJsonObject &body)
{
    const QString title = field(body, "title"_L1);
    const QString every = field(body, "every"_L1);
    const QString clientId = field(body, "client_id"_L1);
    const QString assigneeId = field(body, "assignee_id"_L1);
    const QDate first = QDate::fromString(field(body, "first_due"_L1), Qt::ISODate);
    if (title.isEmpty())
        return WorkspaceReply::error(400, u"Recurring work needs a title."_s);
    if (!repeats.contains(every))
        return WorkspaceReply::error(400, u"\"every\" is \"week\", \"month\" or \"quarter\"."_s);
    if (!first.isValid())
        return WorkspaceReply::error(400, u"\"first_due\" is a day such as 2026-03-31."_s);
    if (!clientId.isEmpty() && !exists("clients", clientId))
        return WorkspaceReply::error(400, u"No such customer."_s);
    if (!assigneeId.isEmpty() && !mayUse(assigneeId))
        return WorkspaceReply::error(400, u"That person does not work on the support board."_s);
    const qint64 now = nowMs();
    const QString rule = addRule(title, clientId, assigneeId, every, now);
    addTask({ .title = title,
                .status = u"todo"_s,
                .priority = u"normal"_s,
                .clientId = clientId,
                .assigneeId = assigneeId,
                .due = first,
                .recurringId = rule },
        now);
    return created(rule);
}

WorkspaceReply SupportStore::stopRecurring(const QString &id)
{
    if (!exists("support_recurring", id))
        return WorkspaceReply::error(404, u"No such recurring work."_s);
    run(m_store.database(), u"UPDATE support_recurring SET active = 0 WHERE id = ?"_s, { id });
    return WorkspaceReply::ok();
}

WorkspaceReply SupportStore::client(const QString &id)
{
    const QSqlDatabase db = m_store.database();
    QSqlQuery c = run(db, u"SELECT name, phone, email FROM clients WHERE id = ?"_s, { id });
    if (!c.next())
        return WorkspaceReply::error(404, u"No such customer."_s);
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id }, { u"name"_s, c.value(0).toString() },
        { u"phone"_s, optionalText(c.value(1)) }, { u"email"_s, optionalText(c.value(2)) },
        { u"notes"_s, notes(db, "support_client_notes", "client_id", id) },
        { u"tasks"_s,
            summaries(db, u"t.client_id = ? AND t.parent_id IS NULL"_s, { id },
                u"t.status = 'done', t.due_date IS NULL, t.due_date, t.id"_s) },
        { u"logged_minutes"_s,
            single(db,
                u"SELECT COALESCE(SUM(l.minutes), 0) FROM support_time l JOIN support_tasks t ON t.id = l.task_id"
                " WHERE t.client_id = ?"_s,
                { id }) } });
}

WorkspaceReply SupportStore::addClientNote(const QString &me, const QString &client, const QString &body)
{
    if (!exists("clients", client))
        return WorkspaceReply::error(404, u"No such customer."_s);
    if (body.trimmed().isEmpty())
        return WorkspaceReply::error(400, u"A note needs text."_s);
    return created(addClientNote(client, me, body.trimmed(), nowMs()));
}

WorkspaceReply SupportStore::saveView(const QString &me, const QJsonObject &body)
{
    const QString name = field(body, "name"_L1);
    if (name.isEmpty())
        return WorkspaceReply::error(400, u"A view needs a name."_s);
    if (single(
            m_store.database(), u"SELECT COUNT(*) FROM support_views WHERE person_id = ? AND name = ?"_s, { me, name }))
        return WorkspaceReply::error(409, u"You already have a view named “%1”."_s.arg(name));
    return created(addView(me, name, body.value("filters"_L1).toObject()));
}

WorkspaceReply SupportStore::renameView(const QString &me, const QString &id, const QString &name)
{
    const QSqlDatabase db = m_store.database();
    if (!single(db, u"SELECT COUNT(*) FROM support_views WHERE id = ? AND person_id = ?"_s, { id, me }))
        return WorkspaceReply::error(404, u"No such view."_s);
    if (name.trimmed().isEmpty())
        return WorkspaceReply::error(400, u"A view needs a name."_s);
    if (single(db, u"SELECT COUNT(*) FROM support_views WHERE person_id = ? AND name = ? AND id != ?"_s,
            { me, name.trimmed(), id }))
        return WorkspaceReply::error(409, u"You already have a view named “%1”."_s.arg(name.trimmed()));
    run(db, u"UPDATE support_views SET name = ? WHERE id = ?"_s, { name.trimmed(), id });
    return WorkspaceReply::ok();
}

WorkspaceReply SupportStore::deleteView(const QString &me, const QString &id)
{
    const QSqlDatabase db = m_store.database();
    if (!single(db, u"SELECT COUNT(*) FROM support_views WHERE id = ? AND person_id = ?"_s, { id, me }))
        return WorkspaceReply::error(404, u"No such view."_s);
    run(db, u"DELETE FROM support_views WHERE id = ?"_s, { id });
    return WorkspaceReply::ok();
}

QString SupportStore::addTask(const NewTask &task, qint64 atMs)
{
    const QString id = newID("st-"_L1);
    const QVariant due = task.due.isValid() ? QVariant(task.due.toString(Qt::ISODate)) : orNull(QString());
    run(m_store.database(),
        u"INSERT INTO support_tasks (id, parent_id, title, description, status, priority, client_id, assignee_id,"
        " due_date, recurring_id, occurrence, created_at, updated_at)"
        " VALUES (?, ?, ?, COALESCE(?, ''), ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { id, orNull(task.parentId), task.title, task.description, task.status, task.priority, orNull(task.clientId),
            orNull(task.assigneeId), due, orNull(task.recurringId),
            task.recurringId.isEmpty() ? orNull(QString()) : due, atMs, atMs });
    return id;
}

QString SupportStore::addRule(
    const QString &title, const QString &clientId, const QString &assigneeId, const QString &every, qint64 atMs)
{
    const QString id = newID("sr-"_L1);
    run(m_store.database(),
        u"INSERT INTO support_recurring (id, title, client_id, assignee_id, priority, every, created_at)"
        " VALUES (?, ?, ?, ?, 'normal', ?, ?)"_s,
        { id, title, orNull(clientId), orNull(assigneeId), every, atMs });
    return id;
}

void SupportStore::addComment(const QString &task, const QString &authorId, const QString &body, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT INTO support_comments (id, task_id, author_id, body, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { newID("sc-"_L1), task, authorId, body, atMs });
}

QString SupportStore::addTime(
    const QString &task, const QString &personId, int minutes, const QDate &day, const QString &note)
{
    const QString id = newID("sl-"_L1);
    run(m_store.database(),
        u"INSERT INTO support_time (id, task_id, person_id, minutes, day, note, created_at)"
        " VALUES (?, ?, ?, ?, ?, COALESCE(?, ''), ?)"_s,
        { id, task, personId, minutes, day.toString(Qt::ISODate), note, nowMs() });
    return id;
}

void SupportStore::startTimer(const QString &personId, const QString &task, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT OR REPLACE INTO support_timers (person_id, task_id, started_at) VALUES (?, ?, ?)"_s,
        { personId, task, atMs });
}

QString SupportStore::addClientNote(const QString &client, const QString &authorId, const QString &body, qint64 atMs)
{
    const QString id = newID("sn-"_L1);
    run(m_store.database(),
        u"INSERT INTO support_client_notes (id, client_id, author_id, body, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { id, client, authorId, body, atMs });
    return id;
}

QString SupportStore::addView(const QString &personId, const QString &name, const QJsonObject &filters)
{
    const QString id = newID("sv-"_L1);
    run(m_store.database(),
        u"INSERT INTO support_views (id, person_id, name, filters, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { id, personId, name, QJsonDocument(filters).toJson(QJsonDocument::Compact), nowMs() });
    return id;
}
