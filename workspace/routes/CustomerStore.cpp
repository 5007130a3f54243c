#include "workspace/routes/CustomerStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QSqlQuery>

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

const char *const schema[] = {
    // version counts saves of the details; stage is one of `stages` below.
    "CREATE TABLE IF NOT EXISTS crm_profiles ("
    " client_id TEXT PRIMARY KEY REFERENCES clients(id), stage TEXT NOT NULL, company TEXT NOT NULL DEFAULT '',"
    " address TEXT NOT NULL DEFAULT '', version INTEGER NOT NULL DEFAULT 1, archived INTEGER NOT NULL DEFAULT 0,"
    " follow_up_on TEXT)",
    "CREATE TABLE IF NOT EXISTS crm_notes ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), author_id TEXT REFERENCES people(id),"
    " body TEXT NOT NULL, created_at INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS crm_notes_client ON crm_notes (client_id)",
    "CREATE TABLE IF NOT EXISTS crm_tasks ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), title TEXT NOT NULL, due_on TEXT,"
    " done_at INTEGER, created_at INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS crm_tasks_client ON crm_tasks (client_id)",
    "CREATE TABLE IF NOT EXISTS crm_stage_changes ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), from_stage TEXT NOT NULL,"
    " to_stage TEXT NOT NULL, person_id TEXT REFERENCES people(id), at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS crm_contacts ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), name TEXT NOT NULL,"
    " role TEXT NOT NULL DEFAULT '', email TEXT NOT NULL DEFAULT '', phone TEXT NOT NULL DEFAULT '')",
    "CREATE TABLE IF NOT EXISTS crm_files ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), name TEXT NOT NULL,"
    " size INTEGER NOT NULL, data BLOB NOT NULL, added_by TEXT REFERENCES people(id), added_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS crm_reminders ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), person_id TEXT REFERENCES people(id),"
    " text TEXT NOT NULL, remind_at INTEGER NOT NULL)",
    // status: draft, sent or discarded; channel: email or text.
    "CREATE TABLE IF NOT EXISTS crm_drafts ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), channel TEXT NOT NULL,"
    " subject TEXT NOT NULL DEFAULT '', body TEXT NOT NULL, status TEXT NOT NULL DEFAULT 'draft',"
    " created_at INTEGER NOT NULL, sent_at INTEGER, sent_by TEXT REFERENCES people(id))",
};

const QStringList stages = { u"lead"_s, u"qualified"_s, u"proposal"_s, u"customer"_s, u"lost"_s };

// A client without a profile row stands where its board puts it.
const QString stageOf = u"COALESCE(p.stage, CASE c.board_id WHEN 'leads' THEN 'lead' ELSE 'customer' END)"_s;

WorkspaceReply noCustomer()
{
    return WorkspaceReply::error(404, u"No such customer."_s);
}

bool isDay(const QString &day)
{
    return QDate::fromString(day, Qt::ISODate).isValid();
}

QJsonObject summaryJSON(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
        { u"stage"_s, q.value(2).toString() }, { u"email"_s, q.value(3).toString() },
        { u"phone"_s, q.value(4).toString() }, { u"company"_s, q.value(5).toString() },
        { u"follow_up_on"_s, optionalText(q.value(6)) }, { u"open_tasks"_s, q.value(7).toLongLong() } };
}

const QString summarySelect = u"SELECT c.id, c.name, "_s + stageOf
    + u", COALESCE(c.email, ''), COALESCE(c.phone, ''), COALESCE(p.company, ''), p.follow_up_on,"
      " (SELECT COUNT(*) FROM crm_tasks t WHERE t.client_id = c.id AND t.done_at IS NULL)"
      " FROM clients c LEFT JOIN crm_profiles p ON p.client_id = c.id WHERE COALESCE(p.archived, 0) = 0"_s;

} // namespace

CustomerStore::CustomerStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool CustomerStore::createSchema()
{
    return BooksSql::runAll(m_store.database(), schema);
}

bool CustomerStore::hasProfiles() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM crm_profiles"_s) > 0;
}

bool CustomerStore::exists(const QString &id) const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM clients WHERE id = ?"_s, { id }) > 0;
}

void CustomerStore::ensureProfile(const QString &id)
{
    run(m_store.database(),
        u"INSERT OR IGNORE INTO crm_profiles (client_id, stage) SELECT id,"
        " CASE board_id WHEN 'leads' THEN 'lead' ELSE 'customer' END FROM clients WHERE id = ?"_s,
        { id });
}

WorkspaceReply CustomerStore::search(const QString &text) const
{
    const QString needle = text.trimmed();
    QJsonArray out;
    if (!needle.isEmpty()) {
        QString pattern = needle;
        pattern.replace(u'\\', u"\\\\"_s).replace(u'%', u"\\%"_s).replace(u'_', u"\\_"_s);
        pattern = u'%' + pattern + u'%';
        // Names that begin with the text come first.
        QSqlQuery q = run(m_store.database(),
            summarySelect
                + u" AND (c.name LIKE ? ESCAPE '\\' OR c.email LIKE ? ESCAPE '\\' OR c.phone LIKE ? ESCAPE '\\'"
                  " OR p.company LIKE ? ESCAPE '\\') ORDER BY (c.name LIKE ? ESCAPE '\\') DESC, c.name LIMIT 20"_s,
            { pattern, pattern, pattern, pattern, pattern.mid(1) });
        while (q.next())
            out.append(summaryJSON(q));
    }
    return WorkspaceReply::json(QJsonObject { { u"clients"_s, out } });
}

WorkspaceReply CustomerStore::list(const QString &stage) const
{
    if (!stage.isEmpty() && !stages.contains(stage))
        return WorkspaceReply::error(400, u"\"stage\" is one of %1."_s.arg(stages.join(u", "_s)));
    QJsonArray out;
    QSqlQuery q = run(m_store.database(),
        summarySelect + (stage.isEmpty() ? QString() : u" AND "_s + stageOf + u" = ?"_s) + u" ORDER BY c.name"_s,
        stage.isEmpty() ? QVariantList() : QVariantList { stage });
    while (q.next())
        out.append(summaryJSON(q));
    return WorkspaceReply::json(QJsonObject { { u"clients"_s, out } });
}

QJsonObject CustomerStore::profileJSON(const QString &id) const
{
    const QSqlDatabase db = m_store.database();
    QSqlQuery c = run(db,
        u"SELECT c.id, c.name, "_s + stageOf
            + u", COALESCE(c.email, ''), COALESCE(c.phone, ''), COALESCE(p.company, ''),"
              " COALESCE(p.address, ''), COALESCE(p.version, 1), COALESCE(p.archived, 0), p.follow_up_on,"
              " c.created_at FROM clients c LEFT JOIN crm_profiles p ON p.client_id = c.id WHERE c.id = ?"_s,
        { id });
    if (!c.next())
        return {};
    QJsonObject out { { u"id"_s, c.value(0).toString() }, { u"name"_s, c.value(1).toString() },
        { u"stage"_s, c.value(2).toString() }, { u"email"_s, c.value(3).toString() },
        { u"phone"_s, c.value(4).toString() }, { u"company"_s, c.value(5).toString() },
        { u"address"_s, c.value(6).toString() }, { u"version"_s, c.value(7).toLongLong() },
        { u"archived"_s, c.value(8).toBool() }, { u"follow_up_on"_s, optionalText(c.value(9)) },
        { u"created_at"_s, isoTime(c.value(10).toLongLong()) } };

    QJsonArray tasks;
    QSqlQuery t = run(db,
        u"SELECT id, title, due_on, done_at IS NOT NULL FROM crm_tasks WHERE client_id = ?"
        " ORDER BY done_at IS NOT NULL, COALESCE(due_on, '9999'), created_at"_s,
        { id });
    while (t.next())
        tasks.append(QJsonObject { { u"id"_s, t.value(0).toString() }, { u"title"_s, t.value(1).toString() },
            { u"due_on"_s, optionalText(t.value(2)) }, { u"done"_s, t.value(3).toBool() } });
    out.insert(u"tasks"_s, tasks);

    QJsonArray contacts;
    QSqlQuery k
        = run(db, u"SELECT id, name, role, email, phone FROM crm_contacts WHERE client_id = ? ORDER BY name"_s, { id });
    while (k.next())
        contacts.append(QJsonObject { { u"id"_s, k.value(0).toString() }, { u"name"_s, k.value(1).toString() },
            { u"role"_s, k.value(2).toString() }, { u"email"_s, k.value(3).toString() },
            { u"phone"_s, k.value(4).toString() } });
    out.insert(u"contacts"_s, contacts);

    QJsonArray files;
    QSqlQuery f = run(
        db, u"SELECT id, name, size, added_at FROM crm_files WHERE client_id = ? ORDER BY added_at DESC, id"_s, { id });
    while (f.next())
        files.append(QJsonObject { { u"id"_s, f.value(0).toString() }, { u"name"_s, f.value(1).toString() },
            { u"size"_s, f.value(2).toLongLong() }, { u"added_at"_s, isoTime(f.value(3).toLongLong()) } });
    out.insert(u"files"_s, files);

    QJsonArray reminders;
    QSqlQuery r = run(db,
        u"SELECT r.id, r.text, r.remind_at, COALESCE(pe.name, '') FROM crm_reminders r"
        " LEFT JOIN people pe ON pe.id = r.person_id WHERE r.client_id = ? ORDER BY r.remind_at, r.id"_s,
        { id });
    while (r.next())
        reminders.append(QJsonObject { { u"id"_s, r.value(0).toString() }, { u"text"_s, r.value(1).toString() },
            { u"remind_at"_s, isoTime(r.value(2).toLongLong()) }, { u"person_name"_s, r.value(3).toString() } });
    out.insert(u"reminders"_s, reminders);

    QJsonArray drafts;
    QSqlQuery d = run(db,
        u"SELECT id, channel, subject, body, created_at FROM crm_drafts WHERE client_id = ? AND status = 'draft'"
        " ORDER BY created_at DESC, id"_s,
        { id });
    while (d.next())
        drafts.append(QJsonObject { { u"id"_s, d.value(0).toString() }, { u"channel"_s, d.value(1).toString() },
            { u"subject"_s, d.value(2).toString() }, { u"body"_s, d.value(3).toString() },
            { u"created_at"_s, isoTime(d.value(4).toLongLong()) } });
    out.insert(u"drafts"_s, drafts);
    return out;
}

WorkspaceReply CustomerStore::profile(const QString &id) const
{
    const QJsonObject out = profileJSON(id);
    return out.isEmpty() ? noCustomer() : WorkspaceReply::json(out);
}

WorkspaceReply CustomerStore::saveDetails(const QString &id, const QJsonObject &body)
{
    const QJsonObject current = profileJSON(id);
    if (current.isEmpty())
        return noCustomer();
    if (!body.value("version"_L1).isDouble())
        return WorkspaceReply::error(400, u"A save names the \"version\" it was based on."_s);
    if (body.value("version"_L1).toInteger() != current.value("version"_L1).toInteger()) {
        // The refusal carries the record as it now stands, so the screen
        // can show it without asking again.
        return WorkspaceReply::json(
            QJsonObject {
                { u"error"_s, u"Someone else changed this customer in the meantime. Their version is shown."_s },
                { u"current"_s, current } },
            409);
    }
    if (body.contains("name"_L1) && body.value("name"_L1).toString().trimmed().isEmpty())
        return WorkspaceReply::error(400, u"A customer needs a name."_s);

    const QSqlDatabase db = m_store.database();
    const auto value = [&](QLatin1StringView key) {
        return body.contains(key) ? body.value(key).toString().trimmed() : current.value(key).toString();
    };
    ensureProfile(id);
    run(db, u"UPDATE clients SET name = ?, email = ?, phone = ? WHERE id = ?"_s,
        { value("name"_L1), orNull(value("email"_L1)), orNull(value("phone"_L1)), id });
    run(db, u"UPDATE crm_profiles SET company = ?, address = ?, version = version + 1 WHERE client_id = ?"_s,
        { value("company"_L1), value("address"_L1), id });
    return profile(id);
}

QList<CustomerStore::Event> CustomerStore::noteEvents(const QString &id) const
{
    QList<Event> out;
    QSqlQuery q = run(m_store.database(),
        u"SELECT n.id, n.body, n.created_at, COALESCE(pe.name, '') FROM crm_notes n"
        " LEFT JOIN people pe ON pe.id = n.author_id WHERE n.client_id = ?"_s,
        { id });
    while (q.next())
        out.append({ q.value(2).toLongLong(), q.value(0).toString(), u"note"_s, u"Note"_s, q.value(1).toString(),
            q.value(3).toString() });
    return out;
}

QList<CustomerStore::Event> CustomerStore::taskEvents(const QString &id) const
{
    QList<Event> out;
    QSqlQuery q = run(
        m_store.database(), u"SELECT id, title, created_at, done_at FROM crm_tasks WHERE client_id = ?"_s, { id });
    while (q.next()) {
        const QString task = q.value(0).toString();
        const QString title = q.value(1).toString();
        out.append({ q.value(2).toLongLong(), task + u":created"_s, u"task"_s, u"Task added"_s, title, {} });
        if (!q.value(3).isNull())
            out.append({ q.value(3).toLongLong(), task + u":done"_s, u"task"_s, u"Task done"_s, title, {} });
    }
    return out;
}

QList<CustomerStore::Event> CustomerStore::stageEvents(const QString &id) const
{
    QList<Event> out;
    QSqlQuery q = run(m_store.database(),
        u"SELECT s.id, s.from_stage, s.to_stage, s.at, COALESCE(pe.name, '') FROM crm_stage_changes s"
        " LEFT JOIN people pe ON pe.id = s.person_id WHERE s.client_id = ?"_s,
        { id });
    // The body names both stages by id; the client labels them.
    while (q.next())
        out.append({ q.value(3).toLongLong(), q.value(0).toString(), u"stage"_s, u"Stage changed"_s,
            q.value(1).toString() + u" → "_s + q.value(2).toString(), q.value(4).toString() });
    return out;
}

QList<CustomerStore::Event> CustomerStore::sentDraftEvents(const QString &id) const
{
    QList<Event> out;
    QSqlQuery q = run(m_store.database(),
        u"SELECT d.id, d.channel, d.subject, d.body, d.sent_at, COALESCE(pe.name, '') FROM crm_drafts d"
        " LEFT JOIN people pe ON pe.id = d.sent_by WHERE d.client_id = ? AND d.status = 'sent'"_s,
        { id });
    while (q.next()) {
        const bool email = q.value(1).toString() == "email"_L1;
        out.append({ q.value(4).toLongLong(), q.value(0).toString(), email ? u"mail"_s : u"inbox"_s,
            email ? q.value(2).toString() : u"Text sent"_s, q.value(3).toString(), q.value(5).toString() });
    }
    return out;
}

QList<CustomerStore::Event> CustomerStore::inboxEvents(const QString &id) const
{
    QList<Event> out;
    QSqlQuery q = run(m_store.database(),
        u"SELECT e.id, e.direction, e.body, e.created_at, COALESCE(pe.name, t.customer_address) FROM inbox_entries e"
        " JOIN inbox_threads t ON t.id = e.thread_id LEFT JOIN people pe ON pe.id = e.author_id"
        " WHERE t.client_id = ? AND e.draft = 0"_s,
        { id });
    while (q.next()) {
        const bool inbound = q.value(1).toString() == "inbound"_L1;
        out.append({ q.value(3).toLongLong(), q.value(0).toString(), u"inbox"_s,
            inbound ? u"Message received"_s : u"Message sent"_s, q.value(2).toString(), q.value(4).toString() });
    }
    return out;
}

QList<CustomerStore::Event> CustomerStore::mailEvents(const QString &id) const
{
    QList<Event> out;
    const QSqlDatabase db = m_store.database();
    const QString email = text(db, u"SELECT COALESCE(email, '') FROM clients WHERE id = ?"_s, { id }).toLower();
    if (email.isEmpty())
        return out;
    const QString quoted = u'"' + email + u'"';
    // A mail copied into several people's boxes is one event.
    QSqlQuery q = run(db,
        u"SELECT MIN(m.id), t.subject, m.snippet, m.date_ms, m.from_name FROM mail_messages m"
        " JOIN mail_threads t ON t.id = m.thread_id"
        " WHERE lower(m.from_email) = ? OR instr(lower(m.to_json), ?) > 0 OR instr(lower(m.cc_json), ?) > 0"
        " GROUP BY m.date_ms, m.from_email, t.subject"_s,
        { email, quoted, quoted });
    while (q.next())
        out.append({ q.value(3).toLongLong(), q.value(0).toString(), u"mail"_s, q.value(1).toString(),
            q.value(2).toString(), q.value(4).toString() });
    return out;
}

QList<CustomerStore::Event> CustomerStore::callEvents(const QString &id) const
{
    QList<Event> out;
    QSqlQuery q = run(m_store.database(),
        u"SELECT c.id, c.direction, c.outcome, c.duration, c.notes, c.started_at, COALESCE(pe.name, '')"
        " FROM calls_book c LEFT JOIN people pe ON pe.id = c.person_id WHERE c.client_id = ?"_s,
        { id });
    while (q.next()) {
        const bool inbound = q.value(1).toString() == "in"_L1;
        const QString outcome = q.value(2).toString();
        const qint64 seconds = q.value(3).toLongLong();
        QString title = inbound ? u"Call received"_s : u"Call made"_s;
        if (outcome == "missed"_L1)
            title = u"Missed call"_s;
        else if (outcome != "answered"_L1)
            title += u" · "_s + QString(outcome).replace(u'-', u' ');
        else
            title += u" · %1:%2"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
        out.append({ q.value(5).toLongLong(), q.value(0).toString(), u"call"_s, title, q.value(4).toString(),
            q.value(6).toString() });
    }
    return out;
}

QList<CustomerStore::Event> CustomerStore::supportEvents(const QString &id) const
{
    QList<Event> out;
    // Subtasks stay with their task on the board and out of the customer's story.
    QSqlQuery q = run(m_store.database(),
        u"SELECT t.id, t.title, t.status, t.created_at, t.updated_at, COALESCE(pe.name, '') FROM support_tasks t"
        " LEFT JOIN people pe ON pe.id = t.assignee_id WHERE t.client_id = ? AND t.parent_id IS NULL"_s,
        { id });
    while (q.next()) {
        const QString task = q.value(0).toString();
        const QString title = q.value(1).toString();
        const QString assignee = q.value(5).toString();
        out.append(
            { q.value(3).toLongLong(), task + u":opened"_s, u"support"_s, u"Support task opened"_s, title, assignee });
        if (q.value(2).toString() == "done"_L1)
            out.append(
                { q.value(4).toLongLong(), task + u":done"_s, u"support"_s, u"Support task done"_s, title, assignee });
    }
    return out;
}

WorkspaceReply CustomerStore::timeline(const QString &id, const QString &before, int limit) const
{
    if (!exists(id))
        return noCustomer();
    const int pageSize = limit <= 0 ? timelinePageDefault : std::min(limit, timelinePageMax);
    // "before" is the last event of the previous page as "ms|id": newer
    // events arriving meanwhile do not shift the pages already read.
    std::optional<std::pair<qint64, QString>> cursor;
    if (!before.isEmpty()) {
        const qsizetype bar = before.indexOf(u'|');
        bool ok = false;
        const qint64 ms = before.left(bar).toLongLong(&ok);
        if (bar < 0 || !ok)
            return WorkspaceReply::error(400, u"\"before\" is the \"next_before\" of the previous page."_s);
        cursor = std::pair { ms, before.mid(bar + 1) };
    }

    QList<Event> events;
    for (QList<Event> part : { noteEvents(id), taskEvents(id), stageEvents(id), sentDraftEvents(id), inboxEvents(id),
             mailEvents(id), callEvents(id), supportEvents(id) })
        events.append(std::move(part));
    const auto newerFirst
        = [](const Event &a, const Event &b) { return a.atMs != b.atMs ? a.atMs > b.atMs : a.id > b.id; };
    std::sort(events.begin(), events.end(), newerFirst);
    auto from = events.cbegin();
    if (cursor) {
        const Event mark { cursor->first, cursor->second, {}, {}, {}, {} };
        from = std::upper_bound(events.cbegin(), events.cend(), mark, newerFirst);
    }

    QJsonArray page;
    auto it = from;
    for (; it != events.cend() && page.size() < pageSize; ++it)
        page.append(QJsonObject { { u"id"_s, it->id }, { u"kind"_s, it->kind }, { u"at"_s, isoTime(it->atMs) },
            { u"title"_s, it->title }, { u"body"_s, it->body },
            { u"author_name"_s, it->author.isEmpty() ? QJsonValue() : QJsonValue(it->author) } });
    const auto last = std::prev(it);
    const QJsonValue next
        = it == events.cend() ? QJsonValue() : QJsonValue(QString::number(last->atMs) + u'|' + last->id);
    return WorkspaceReply::json(QJsonObject { { u"events"_s, page }, { u"next_before"_s, next } });
}

WorkspaceReply CustomerStore::changeStage(const QString &me, const QString &id, const QString &stage)
{
    if (!stages.contains(stage))
        return WorkspaceReply::error(400, u"\"stage\" is one of %1."_s.arg(stages.join(u", "_s)));
    const QJsonObject current = profileJSON(id);
    if (current.isEmpty())
        return noCustomer();
    const QString from = current.value("stage"_L1).toString();
    if (from == stage)
        return WorkspaceReply::ok();
    ensureProfile(id);
    run(m_store.database(), u"UPDATE crm_profiles SET stage = ? WHERE client_id = ?"_s, { stage, id });
    plantStageChange(id, from, stage, me, nowMs());
    return WorkspaceReply::ok();
}

WorkspaceReply CustomerStore::updateTask(const QString &task, const QJsonObject &body)
{
    const QSqlDatabase db = m_store.database();
    if (single(db, u"SELECT COUNT(*) FROM crm_tasks WHERE id = ?"_s, { task }) == 0)
        return WorkspaceReply::error(404, u"No such task."_s);
    if (body.contains("title"_L1)) {
        const QString title = body.value("title"_L1).toString().trimmed();
        if (title.isEmpty())
            return WorkspaceReply::error(400, u"A task needs a title."_s);
        run(db, u"UPDATE crm_tasks SET title = ? WHERE id = ?"_s, { title, task });
    }
    if (body.contains("due_on"_L1)) {
        const QString due = body.value("due_on"_L1).toString();
        if (!due.isEmpty() && !isDay(due))
            return WorkspaceReply::error(400, u"\"due_on\" is a day, YYYY-MM-DD, or empty."_s);
        run(db, u"UPDATE crm_tasks SET due_on = ? WHERE id = ?"_s, { orNull(due), task });
    }
    if (body.contains("done"_L1)) {
        // Done twice keeps the first time it was done.
        if (body.value("done"_L1).toBool())
            run(db, u"UPDATE crm_tasks SET done_at = COALESCE(done_at, ?) WHERE id = ?"_s, { nowMs(), task });
        else
            run(db, u"UPDATE crm_tasks SET done_at = NULL WHERE id = ?"_s, { task });
    }
    return WorkspaceReply::ok();
}

WorkspaceReply CustomerStore::deleteTask(const QString &task)
{
    return removeRow("crm_tasks"_L1, task, u"No such task."_s);
}

WorkspaceReply CustomerStore::removeRow(QLatin1StringView table, const QString &id, const QString &missing)
{
    const QSqlDatabase db = m_store.database();
    if (single(db, u"SELECT COUNT(*) FROM %1 WHERE id = ?"_s.arg(table), { id }) == 0)
        return WorkspaceReply::error(404, missing);
    run(db, u"DELETE FROM %1 WHERE id = ?"_s.arg(table), { id });
    return WorkspaceReply::ok();
}

WorkspaceReply CustomerStore::addNote(const QString &me, const QString &id, const QString &body)
{
    if (!exists(id))
        return noCustomer();
    if (body.trimmed().isEmpty())
        return WorkspaceReply::error(400, u"A note needs text."_s);
    const QString note = newID("cn-"_L1);
    run(m_store.database(),
        u"INSERT INTO crm_notes (id, client_id, author_id, body, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { note, id, me, body.trimmed(), nowMs() });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, note } });
}

WorkspaceReply CustomerStore::addContact(const QString &id, const QJsonObject &body)
{
    if (!exists(id))
        return noCustomer();
    const QString name = body.value("name"_L1).toString().trimmed();
    if (name.isEmpty())
        return WorkspaceReply::error(400, u"A contact needs a name."_s);
    const QString contact = newID("ck-"_L1);
    run(m_store.database(),
        u"INSERT INTO crm_contacts (id, client_id, name, role, email, phone) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { contact, id, name, body.value("role"_L1).toString().trimmed(), body.value("email"_L1).toString().trimmed(),
            body.value("phone"_L1).toString().trimmed() });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, contact } });
}

WorkspaceReply CustomerStore::deleteContact(const QString &contact)
{
    return removeRow("crm_contacts"_L1, contact, u"No such contact."_s);
}

WorkspaceReply CustomerStore::uploadFile(const QString &me, const QString &id, const QJsonObject &body)
{
    if (!exists(id))
        return noCustomer();
    const QString name = body.value("name"_L1).toString().trimmed();
    const auto data = QByteArray::fromBase64Encoding(
        body.value("data"_L1).toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (name.isEmpty() || !data)
        return WorkspaceReply::error(400, u"A file needs a \"name\" and base64 \"data\"."_s);
    if (data.decoded.size() > fileLimitBytes)
        return WorkspaceReply::error(413, u"“%1” is larger than 10 MB, the limit for a customer's files."_s.arg(name));
    const QString file = plantFile(id, name, data.decoded, me, nowMs());
    return WorkspaceReply::json(QJsonObject { { u"id"_s, file } });
}

WorkspaceReply CustomerStore::downloadFile(const QString &id, const QString &file) const
{
    QSqlQuery q = run(m_store.database(), u"SELECT data FROM crm_files WHERE id = ? AND client_id = ?"_s, { file, id });
    if (!q.next())
        return WorkspaceReply::error(404, u"No such file."_s);
    return WorkspaceReply { 200, "application/octet-stream"_ba, q.value(0).toByteArray(), {} };
}

WorkspaceReply CustomerStore::deleteFile(const QString &id, const QString &file)
{
    const QSqlDatabase db = m_store.database();
    if (single(db, u"SELECT COUNT(*) FROM crm_files WHERE id = ? AND client_id = ?"_s, { file, id }) == 0)
        return WorkspaceReply::error(404, u"No such file."_s);
    run(db, u"DELETE FROM crm_files WHERE id = ?"_s, { file });
    return WorkspaceReply::ok();
}

WorkspaceReply CustomerStore::addReminder(const QString &me, const QString &id, const QJsonObject &body)
{
    if (!exists(id))
        return noCustomer();
    const QString text = body.value("text"_L1).toString().trimmed();
    const QDateTime at = QDateTime::fromString(body.value("remind_at"_L1).toString(), Qt::ISODateWithMs);
    if (text.isEmpty() || !at.isValid())
        return WorkspaceReply::error(400, u"A reminder needs \"text\" and a \"remind_at\" time."_s);
    const QString reminder = newID("cr-"_L1);
    run(m_store.database(),
        u"INSERT INTO crm_reminders (id, client_id, person_id, text, remind_at) VALUES (?, ?, ?, ?, ?)"_s,
        { reminder, id, me, text, at.toMSecsSinceEpoch() });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, reminder } });
}

WorkspaceReply CustomerStore::setFollowUp(const QString &id, const QString &on)
{
    if (!exists(id))
        return noCustomer();
    if (!on.isEmpty() && !isDay(on))
        return WorkspaceReply::error(400, u"\"on\" is a day, YYYY-MM-DD, or empty to clear it."_s);
    ensureProfile(id);
    run(m_store.database(), u"UPDATE crm_profiles SET follow_up_on = ? WHERE client_id = ?"_s, { orNull(on), id });
    return WorkspaceReply::ok();
}

WorkspaceReply CustomerStore::archive(const QString &id)
{
    if (!exists(id))
        return noCustomer();
    ensureProfile(id);
    run(m_store.database(), u"UPDATE crm_profiles SET archived = 1 WHERE client_id = ?"_s, { id });
    return WorkspaceReply::ok();
}

WorkspaceReply CustomerStore::sendDraft(const QString &me, const QString &draft)
{
    return settleDraft(draft, u"sent"_s, me);
}

WorkspaceReply CustomerStore::discardDraft(const QString &draft)
{
    return settleDraft(draft, u"discarded"_s, {});
}

// A draft is sent or discarded once: the second of two people is refused.
WorkspaceReply CustomerStore::settleDraft(const QString &draft, const QString &status, const QString &by)
{
    const QSqlDatabase db = m_store.database();
    const QString current = text(db, u"SELECT status FROM crm_drafts WHERE id = ?"_s, { draft });
    if (current.isNull())
        return WorkspaceReply::error(404, u"No such draft."_s);
    if (current != "draft"_L1)
        return WorkspaceReply::error(409, u"This draft was already %1."_s.arg(current));
    const bool sent = !by.isEmpty();
    run(db, u"UPDATE crm_drafts SET status = ?, sent_at = ?, sent_by = ? WHERE id = ?"_s,
        { status, sent ? QVariant(nowMs()) : QVariant(QMetaType::fromType<qint64>()), orNull(by), draft });
    return WorkspaceReply::ok();
}

void CustomerStore::plantClient(
    const QString &id, const QString &name, const QString &phone, const QString &email, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT OR IGNORE INTO clients (id, name, board_id, phone, email, created_at)"
        " VALUES (?, ?, 'customers', ?, ?, ?)"_s,
        { id, name, orNull(phone), orNull(email), atMs });
}

void CustomerStore::plantProfile(
    const QString &id, const QString &stage, const QString &company, const QString &address, const QString &followUpOn)
{
    run(m_store.database(),
        u"INSERT OR REPLACE INTO crm_profiles (client_id, stage, company, address, follow_up_on)"
        " VALUES (?, ?, ?, ?, ?)"_s,
        { id, stage, company.isNull() ? u""_s : company, address.isNull() ? u""_s : address, orNull(followUpOn) });
}

void CustomerStore::plantNote(const QString &id, const QString &author, const QString &body, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT INTO crm_notes (id, client_id, author_id, body, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { newID("cn-"_L1), id, orNull(author), body, atMs });
}

void CustomerStore::plantTask(const QString &id, const DemoTask &task)
{
    run(m_store.database(),
        u"INSERT INTO crm_tasks (id, client_id, title, due_on, done_at, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { newID("ct-"_L1), id, task.title, orNull(task.dueOn),
            task.done ? QVariant(task.createdMs + 2 * 86'400'000LL) : QVariant(QMetaType::fromType<qint64>()),
            task.createdMs });
}

void CustomerStore::plantStageChange(
    const QString &id, const QString &from, const QString &to, const QString &by, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT INTO crm_stage_changes (id, client_id, from_stage, to_stage, person_id, at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { newID("cs-"_L1), id, from, to, orNull(by), atMs });
}

void CustomerStore::plantContact(const QString &id, const QString &name, const QString &role, const QString &email)
{
    run(m_store.database(), u"INSERT INTO crm_contacts (id, client_id, name, role, email) VALUES (?, ?, ?, ?, ?)"_s,
        { newID("ck-"_L1), id, name, role, email });
}

QString CustomerStore::plantFile(
    const QString &id, const QString &name, const QByteArray &data, const QString &by, qint64 atMs)
{
    const QString file = newID("cf-"_L1);
    run(m_store.database(),
        u"INSERT INTO crm_files (id, client_id, name, size, data, added_by, added_at) VALUES (?, ?, ?, ?, ?, ?, ?)"_s,
        { file, id, name, data.size(), data, orNull(by), atMs });
    return file;
}

void CustomerStore::plantReminder(const QString &id, const QString &person, const QString &text, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT INTO crm_reminders (id, client_id, person_id, text, remind_at) VALUES (?, ?, ?, ?, ?)"_s,
        { newID("cr-"_L1), id, person, text, atMs });
}

void CustomerStore::plantDraft(
    const QString &id, const QString &channel, const QString &subject, const QString &body, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT INTO crm_drafts (id, client_id, channel, subject, body, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { newID("cd-"_L1), id, channel, subject.isNull() ? u""_s : subject, body, atMs });
}
