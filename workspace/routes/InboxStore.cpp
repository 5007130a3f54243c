#include "workspace/routes/InboxStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QSqlError>
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

// An outbound message is with the provider this long, then sent, then
// delivered: the few seconds a real network takes.
constexpr qint64 queuedMs = 1500;
constexpr qint64 sentMs = 4000;

const QString inboxApp = u"Calls"_s;

bool answerable(const QString &kind)
{
    return kind == "text"_L1 || kind == "email"_L1;
}

QString businessAddress(const QString &kind)
{
    if (kind == "email"_L1)
        return u"hello@halvard.example"_s;
    if (kind == "web"_L1)
        return u"halvard.example/contact"_s;
    return u"+1 555 0100"_s;
}

// The newest entry of the thread `t`, drafts included or not.
QString newest(const char *column, bool withDrafts)
{
    return u"(SELECT e.%1 FROM inbox_entries e WHERE e.thread_id = t.id%2 ORDER BY e.created_at DESC, e.seq DESC"
           " LIMIT 1)"_s.arg(QLatin1StringView(column), withDrafts ? QString() : u" AND e.draft = 0"_s);
}

QString unrepliedExpression()
{
    return u"(t.done = 0 AND "_s + newest("direction", false) + u" = 'inbound')"_s;
}

WorkspaceReply empty()
{
    return WorkspaceReply::json(QJsonObject());
}

WorkspaceReply noThread()
{
    return WorkspaceReply::error(404, u"No such conversation."_s);
}

} // namespace

InboxStore::InboxStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool InboxStore::mayUse(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->apps.contains(inboxApp);
}

bool InboxStore::hasThreads() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM inbox_threads"_s) > 0;
}

bool InboxStore::hasClients() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM clients"_s) > 0;
}

QStringList InboxStore::inboxPeople() const
{
    QStringList out;
    for (const WorkspacePerson &person : m_store.people())
        if (person.apps.contains(inboxApp))
            out.append(person.id);
    return out;
}

void InboxStore::wakeSnoozed()
{
    const qint64 now = nowMs();
    run(m_store.database(),
        u"UPDATE inbox_threads SET snoozed_until = NULL, updated_at = ? WHERE snoozed_until IS NOT NULL"
        " AND snoozed_until <= ?"_s,
        { now, now });
}

InboxStore::Access InboxStore::accessTo(const QString &me, const QString &id) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT t.kind, t.owner_id, p.name, EXISTS (SELECT 1 FROM inbox_entries e WHERE e.thread_id = t.id"
        " AND e.direction = 'inbound') FROM inbox_threads t LEFT JOIN people p ON p.id = t.owner_id WHERE t.id = ?"_s,
        { id });
    if (!q.next())
        return {};
    const std::optional<WorkspacePerson> person = m_store.person(me);
    const QString owner = q.value(1).toString();
    const bool canSend = answerable(q.value(0).toString());
    return { .found = true,
        .canEdit = owner.isEmpty() || owner == me || (person && person->owner),
        .canSend = canSend,
        // The assistant answers what a customer wrote, on a channel that can be answered.
        .aiConfigured = canSend && q.value(3).toBool(),
        .ownerName = q.value(2).toString() };
}

WorkspaceReply InboxStore::list(const QString &me, const QString &scope, const QString &view, const QString &kind)
{
    QStringList where;
    QVariantList values;
    if (scope == "mine"_L1) {
        where.append(u"t.owner_id = ?"_s);
        values.append(me);
    } else if (scope == "unassigned"_L1) {
        where.append(u"t.owner_id IS NULL"_s);
    } else if (scope != "all"_L1) {
        return WorkspaceReply::error(400, u"\"scope\" is \"mine\", \"unassigned\" or \"all\"."_s);
    }
    if (view == "open"_L1)
        where.append(u"t.done = 0 AND t.snoozed_until IS NULL"_s);
    else if (view == "snoozed"_L1)
        where.append(u"t.done = 0 AND t.snoozed_until IS NOT NULL"_s);
    else if (view == "done"_L1)
        where.append(u"t.done = 1"_s);
    else
        return WorkspaceReply::error(400, u"\"view\" is \"open\", \"snoozed\" or \"done\"."_s);
    if (kind.isEmpty())
        return WorkspaceReply::error(400, u"\"kind\" is \"all\" or a channel such as \"text\"."_s);
    if (kind != "all"_L1) {
        where.append(u"t.kind = ?"_s);
        values.append(kind);
    }

    wakeSnoozed();
    const QSqlDatabase db = m_store.database();
    QSqlQuery q = run(db,
        u"SELECT t.id, t.kind, t.client_id, t.customer_address, p.name, c.name, %1, %2,"
        " COALESCE(%3, t.updated_at) AS last_at, %4, t.updated_at"
        " FROM inbox_threads t LEFT JOIN people p ON p.id = t.owner_id LEFT JOIN clients c ON c.id = t.client_id"
        " WHERE %5 ORDER BY last_at DESC, t.id"_s.arg(newest("body", true), newest("draft", true),
            newest("created_at", true), unrepliedExpression(), where.join(" AND "_L1)),
        values);
    QJsonArray threads;
    while (q.next()) {
        threads.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"kind"_s, q.value(1).toString() },
            { u"client_id"_s, optionalText(q.value(2)) }, { u"customer_address"_s, q.value(3).toString() },
            { u"owner_name"_s, optionalText(q.value(4)) }, { u"client_name"_s, optionalText(q.value(5)) },
            { u"preview"_s, q.value(6).toString() }, { u"preview_draft"_s, q.value(7).toBool() },
            { u"last_message_at"_s, isoTime(q.value(8).toLongLong()) }, { u"unreplied"_s, q.value(9).toBool() },
            { u"updated_at"_s, isoTime(q.value(10).toLongLong()) } });
    }
    // Every open thread waiting for a reply, whatever the filters: the badge's count.
    const qint64 unreplied = single(
        db, u"SELECT COUNT(*) FROM inbox_threads t WHERE t.snoozed_until IS NULL AND "_s + unrepliedExpression());
    return WorkspaceReply::json(QJsonObject { { u"threads"_s, threads }, { u"unreplied_count"_s, unreplied } });
}

WorkspaceReply InboxStore::thread(const QString &me, const QString &id)
{
    wakeSnoozed();
    const Access access = accessTo(me, id);
    if (!access.found)
        return noThread();
    const QSqlDatabase db = m_store.database();
    QSqlQuery t = run(db,
        u"SELECT t.kind, t.client_id, t.customer_address, t.business_address, t.owner_id, t.snoozed_until, c.name"
        " FROM inbox_threads t LEFT JOIN clients c ON c.id = t.client_id WHERE t.id = ?"_s,
        { id });
    t.next();
    const QString kind = t.value(0).toString();

    const qint64 now = nowMs();
    QJsonArray entries;
    QSqlQuery e = run(db,
        u"SELECT e.id, e.direction, e.body, e.author_id, p.name, e.draft, e.mentions, e.created_at"
        " FROM inbox_entries e LEFT JOIN people p ON p.id = e.author_id WHERE e.thread_id = ?"
        " ORDER BY e.created_at, e.seq"_s,
        { id });
    while (e.next()) {
        const QString entryId = e.value(0).toString();
        const bool inbound = e.value(1).toString() == "inbound"_L1;
        const bool draft = e.value(5).toBool();
        const qint64 age = now - e.value(7).toLongLong();
        QJsonValue status = QJsonValue::Null;
        if (draft)
            status = u"draft"_s;
        else if (!inbound)
            status = age < queuedMs ? u"queued"_s : age < sentMs ? u"sent"_s : u"delivered"_s;
        const bool withProvider = !draft && (inbound || age >= queuedMs);
        QJsonArray attachments;
        QSqlQuery a
            = run(db, u"SELECT id, name, status FROM inbox_attachments WHERE entry_id = ? ORDER BY id"_s, { entryId });
        while (a.next())
            attachments.append(QJsonObject { { u"id"_s, a.value(0).toString() }, { u"name"_s, a.value(1).toString() },
                { u"status"_s, a.value(2).toString() } });
        const QString mentions = e.value(6).toString();
        entries.append(QJsonObject { { u"id"_s, entryId }, { u"direction"_s, e.value(1).toString() },
            { u"body"_s, e.value(2).toString() },
            { u"author_name"_s, inbound ? optionalText(t.value(6)) : optionalText(e.value(4)) },
            { u"message_id"_s, withProvider ? QJsonValue(u"msg-"_s + entryId) : QJsonValue() },
            { u"provider_key"_s, withProvider ? QJsonValue(u"local-"_s + kind) : QJsonValue() },
            { u"status"_s, status }, { u"created_at"_s, isoTime(e.value(7).toLongLong()) },
            { u"mentions"_s, QJsonArray::fromStringList(mentions.isEmpty() ? QStringList() : mentions.split(u',')) },
            { u"attachments"_s, attachments }, { u"can_discard"_s, draft && e.value(3).toString() == me } });
    }

    QJsonArray people;
    for (const QString &personId : inboxPeople())
        people.append(QJsonObject { { u"id"_s, personId }, { u"name"_s, m_store.person(personId)->name } });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id }, { u"kind"_s, kind },
        { u"client_id"_s, optionalText(t.value(1)) }, { u"customer_address"_s, t.value(2).toString() },
        { u"business_address"_s, t.value(3).toString() }, { u"owner_id"_s, optionalText(t.value(4)) },
        { u"snoozed_until"_s, t.value(5).isNull() ? QJsonValue() : QJsonValue(isoTime(t.value(5).toLongLong())) },
        { u"client_name"_s, t.value(6).toString() }, { u"entries"_s, entries }, { u"can_edit"_s, access.canEdit },
        { u"can_send"_s, access.canSend }, { u"ai_configured"_s, access.aiConfigured },
        { u"sending_address"_s, access.canSend ? QJsonValue(t.value(3).toString()) : QJsonValue() },
        { u"assignees"_s, people }, { u"mention_targets"_s, people } });
}

WorkspaceReply InboxStore::act(const QString &me, const QString &id, const QString &action, const QJsonObject &body)
{
    wakeSnoozed();
    const Access access = accessTo(me, id);
    if (!access.found)
        return noThread();
    if (action == "reply"_L1)
        return reply(me, id, body);
    const QSqlDatabase db = m_store.database();
    if (action == "discard"_L1) {
        const QString entry = body.value("entry_id"_L1).toString();
        if (single(db,
                u"SELECT COUNT(*) FROM inbox_entries WHERE id = ? AND thread_id = ? AND draft = 1 AND author_id = ?"_s,
                { entry, id, me })
            == 0)
            return WorkspaceReply::error(409, u"Only your own unsent draft can be discarded."_s);
        run(db, u"DELETE FROM inbox_attachments WHERE entry_id = ?"_s, { entry });
        run(db, u"DELETE FROM inbox_notifications WHERE entry_id = ?"_s, { entry });
        run(db, u"DELETE FROM inbox_entries WHERE id = ?"_s, { entry });
        return empty();
    }
    if (!access.canEdit)
        return WorkspaceReply::error(403, u"This conversation is assigned to %1."_s.arg(access.ownerName));

    const qint64 now = nowMs();
    if (action == "assign"_L1) {
        const QString owner = body.value("owner_id"_L1).toString();
        if (!inboxPeople().contains(owner))
            return WorkspaceReply::error(400, u"Assign the conversation to someone in the inbox."_s);
        run(db, u"UPDATE inbox_threads SET owner_id = ?, updated_at = ? WHERE id = ?"_s, { owner, now, id });
    } else if (action == "clear"_L1) {
        run(db, u"UPDATE inbox_threads SET owner_id = NULL, updated_at = ? WHERE id = ?"_s, { now, id });
    } else if (action == "snooze"_L1) {
        const QDateTime until = QDateTime::fromString(body.value("until"_L1).toString(), Qt::ISODate);
        if (!until.isValid() || until.toMSecsSinceEpoch() <= now)
            return WorkspaceReply::error(400, u"Snooze until a time that is still to come."_s);
        run(db, u"UPDATE inbox_threads SET snoozed_until = ?, done = 0, updated_at = ? WHERE id = ?"_s,
            { until.toMSecsSinceEpoch(), now, id });
    } else if (action == "done"_L1 || action == "reopen"_L1) {
        run(db, u"UPDATE inbox_threads SET done = ?, snoozed_until = NULL, updated_at = ? WHERE id = ?"_s,
            { action == "done"_L1 ? 1 : 0, now, id });
    } else {
        return WorkspaceReply::notFound();
    }
    return empty();
}

WorkspaceReply InboxStore::reply(const QString &me, const QString &id, const QJsonObject &body)
{
    if (!accessTo(me, id).canSend)
        return WorkspaceReply::error(403, u"This conversation cannot be answered from here."_s);
    const QString text = body.value("body"_L1).toString().trimmed();
    const QString nonce = body.value("nonce"_L1).toString();
    if (text.isEmpty() || nonce.isEmpty())
        return WorkspaceReply::error(400, u"A reply needs a \"body\" and a \"nonce\"."_s);
    QStringList mentions;
    const QStringList team = inboxPeople();
    for (const QJsonValue &mention : body.value("mentions"_L1).toArray()) {
        if (!team.contains(mention.toString()))
            return WorkspaceReply::error(400, u"Mention only people in the inbox."_s);
        mentions.append(mention.toString());
    }
    const QSqlDatabase db = m_store.database();
    // The same nonce is the same reply, retried after its answer was lost.
    if (single(db, u"SELECT COUNT(*) FROM inbox_entries WHERE thread_id = ? AND nonce = ?"_s, { id, nonce }) > 0)
        return empty();
    const qint64 now = nowMs();
    const QString entry = newID("ie-"_L1);
    const QSqlQuery stored = run(db,
        u"INSERT INTO inbox_entries (id, thread_id, direction, body, author_id, nonce, mentions, created_at)"
        " VALUES (?, ?, 'outbound', ?, ?, ?, ?, ?)"_s,
        { entry, id, text, me, nonce, mentions.join(u','), now });
    if (stored.lastError().isValid())
        return WorkspaceReply::error(500, u"The reply could not be stored."_s);
    run(db, u"UPDATE inbox_threads SET updated_at = ? WHERE id = ?"_s, { now, id });
    mentions.removeAll(me);
    notify(entry, mentions, u"mention"_s);
    return empty();
}

WorkspaceReply InboxStore::assist(const QString &me, const QString &id, const QString &draft)
{
    const Access access = accessTo(me, id);
    if (!access.found)
        return noThread();
    if (!access.aiConfigured)
        return WorkspaceReply::error(409, u"Pilo cannot draft a reply to this conversation."_s);
    const QSqlDatabase db = m_store.database();
    const QString client
        = text(db, u"SELECT c.name FROM inbox_threads t JOIN clients c ON c.id = t.client_id WHERE t.id = ?"_s, { id });
    const QString asked = text(db,
        u"SELECT body FROM inbox_entries WHERE thread_id = ? AND direction = 'inbound' AND draft = 0"
        " ORDER BY created_at DESC, seq DESC LIMIT 1"_s,
        { id });
    const QString me_ = m_store.person(me)->name.section(u' ', 0, 0);
    QString suggestion
        = u"Hi %1, thanks for your message: \"%2\". "_s.arg(client.isEmpty() ? u"there"_s : client, asked.left(80));
    suggestion += draft.trimmed().isEmpty() ? u"We will get back to you today."_s : draft.trimmed();
    suggestion += u"\n%1, Halvard & Co."_s.arg(me_);
    return WorkspaceReply::json(QJsonObject { { u"draft"_s, suggestion } });
}

WorkspaceReply InboxStore::createCustomer(
    const QString &me, const QString &id, const QString &board, const QString &name)
{
    const Access access = accessTo(me, id);
    if (!access.found)
        return noThread();
    if (board != "customers"_L1 && board != "leads"_L1)
        return WorkspaceReply::error(400, u"\"board_id\" is \"customers\" or \"leads\"."_s);
    if (name.trimmed().isEmpty())
        return WorkspaceReply::error(400, u"A customer needs a name."_s);
    const QSqlDatabase db = m_store.database();
    QSqlQuery t = run(db, u"SELECT kind, customer_address, client_id FROM inbox_threads WHERE id = ?"_s, { id });
    t.next();
    if (!t.value(2).isNull())
        return WorkspaceReply::error(409, u"This conversation already belongs to a customer."_s);
    const bool email = t.value(0).toString() == "email"_L1;
    const QString client = newID("c-"_L1);
    run(db, u"INSERT INTO clients (id, name, board_id, phone, email, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { client, name.trimmed(), board, email ? QVariant() : t.value(1), email ? t.value(1) : QVariant(), nowMs() });
    run(db, u"UPDATE inbox_threads SET client_id = ?, updated_at = ? WHERE id = ?"_s, { client, nowMs(), id });
    return WorkspaceReply::json(QJsonObject { { u"client_id"_s, client } });
}

WorkspaceReply InboxStore::startConversation(
    const QString &me, const QString &kind, const QString &clientId, const QString &address)
{
    if (!answerable(kind))
        return WorkspaceReply::error(400, u"A conversation starts as \"text\" or \"email\"."_s);
    const QSqlDatabase db = m_store.database();
    QString to = address.trimmed();
    if (!clientId.isEmpty()) {
        QSqlQuery c = run(db, u"SELECT phone, email FROM clients WHERE id = ?"_s, { clientId });
        if (!c.next())
            return WorkspaceReply::error(404, u"No such customer."_s);
        if (to.isEmpty())
            to = c.value(kind == "email"_L1 ? 1 : 0).toString();
    }
    if (to.isEmpty())
        return WorkspaceReply::error(400, u"Say where to reach the customer: \"customer_address\"."_s);
    QString thread = text(db, u"SELECT id FROM inbox_threads WHERE kind = ? AND customer_address = ?"_s, { kind, to });
    if (thread.isEmpty())
        thread = addThread(kind, to, clientId, me, nowMs());
    else if (!clientId.isEmpty())
        run(db, u"UPDATE inbox_threads SET client_id = COALESCE(client_id, ?) WHERE id = ?"_s, { clientId, thread });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, thread } });
}

WorkspaceReply InboxStore::notifications(const QString &me)
{
    QJsonArray out;
    QSqlQuery q = run(m_store.database(),
        u"SELECT n.entry_id, e.thread_id, n.reason, e.body, c.name FROM inbox_notifications n"
        " JOIN inbox_entries e ON e.id = n.entry_id JOIN inbox_threads t ON t.id = e.thread_id"
        " LEFT JOIN clients c ON c.id = t.client_id WHERE n.person_id = ? AND n.dismissed = 0"
        " ORDER BY e.created_at DESC, e.seq DESC"_s,
        { me });
    while (q.next())
        out.append(QJsonObject { { u"entry_id"_s, q.value(0).toString() }, { u"thread_id"_s, q.value(1).toString() },
            { u"reason"_s, q.value(2).toString() }, { u"body"_s, q.value(3).toString() },
            { u"client_name"_s, optionalText(q.value(4)) } });
    return WorkspaceReply::json(out);
}

void InboxStore::dismiss(const QString &me, const QString &entryId)
{
    run(m_store.database(), u"UPDATE inbox_notifications SET dismissed = 1 WHERE entry_id = ? AND person_id = ?"_s,
        { entryId, me });
}

void InboxStore::notify(const QString &entry, const QStringList &people, const QString &reason)
{
    for (const QString &person : people)
        run(m_store.database(),
            u"INSERT OR IGNORE INTO inbox_notifications (entry_id, person_id, reason) VALUES (?, ?, ?)"_s,
            { entry, person, reason });
}

QString InboxStore::receive(const QString &kind, const QString &address, const QString &body, qint64 atMs)
{
    const QSqlDatabase db = m_store.database();
    QString thread
        = text(db, u"SELECT id FROM inbox_threads WHERE kind = ? AND customer_address = ?"_s, { kind, address });
    if (thread.isEmpty()) {
        const QString client
            = text(db, u"SELECT id FROM clients WHERE phone = ? OR email = ? ORDER BY id"_s, { address, address });
        thread = addThread(kind, address, client, QString(), atMs);
    }
    const QString entry = addEntry(thread, u"inbound"_s, body, QString(), false, atMs);
    setThreadState(thread, false, 0);
    const QString owner = text(db, u"SELECT owner_id FROM inbox_threads WHERE id = ?"_s, { thread });
    notify(entry, owner.isEmpty() ? inboxPeople() : QStringList { owner }, u"inbound"_s);
    return thread;
}

void InboxStore::addClient(const QString &id, const QString &name, const QString &phone, const QString &email)
{
    run(m_store.database(),
        u"INSERT OR IGNORE INTO clients (id, name, board_id, phone, email, created_at)"
        " VALUES (?, ?, 'customers', ?, ?, ?)"_s,
        { id, name, orNull(phone), orNull(email), nowMs() });
}

QString InboxStore::addThread(
    const QString &kind, const QString &address, const QString &clientId, const QString &ownerId, qint64 atMs)
{
    const QString id = newID("it-"_L1);
    run(m_store.database(),
        u"INSERT INTO inbox_threads (id, kind, client_id, customer_address, business_address, owner_id, updated_at)"
        " VALUES (?, ?, ?, ?, ?, ?, ?)"_s,
        { id, kind, orNull(clientId), address, businessAddress(kind), orNull(ownerId), atMs });
    return id;
}

QString InboxStore::addEntry(const QString &thread, const QString &direction, const QString &body,
    const QString &authorId, bool draft, qint64 atMs)
{
    const QString id = newID("ie-"_L1);
    run(m_store.database(),
        u"INSERT INTO inbox_entries (id, thread_id, direction, body, author_id, draft, created_at)"
        " VALUES (?, ?, ?, ?, ?, ?, ?)"_s,
        { id, thread, direction, body, orNull(authorId), draft ? 1 : 0, atMs });
    run(m_store.database(), u"UPDATE inbox_threads SET updated_at = MAX(updated_at, ?) WHERE id = ?"_s,
        { atMs, thread });
    return id;
}

void InboxStore::setThreadState(const QString &thread, bool done, qint64 snoozedUntilMs)
{
    run(m_store.database(), u"UPDATE inbox_threads SET done = ?, snoozed_until = ? WHERE id = ?"_s,
        { done ? 1 : 0, snoozedUntilMs > 0 ? QVariant(snoozedUntilMs) : QVariant(QMetaType::fromType<qint64>()),
            thread });
}

void InboxStore::addAttachment(const QString &entry, const QString &name, const QString &status)
{
    run(m_store.database(), u"INSERT INTO inbox_attachments (id, entry_id, name, status) VALUES (?, ?, ?, ?)"_s,
        { newID("ia-"_L1), entry, name, status });
}
