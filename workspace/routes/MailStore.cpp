#include "workspace/routes/MailStore.h"

#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS mail_boxes ("
    " person_id TEXT PRIMARY KEY REFERENCES people(id), email TEXT NOT NULL, connected INTEGER NOT NULL)",
    // folder: inbox, sent (only sent from here), done or trash; a snoozed
    // thread stays in its folder and is left out of it until snoozed_until.
    "CREATE TABLE IF NOT EXISTS mail_threads ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), conversation TEXT NOT NULL,"
    " subject TEXT NOT NULL, category TEXT NOT NULL, folder TEXT NOT NULL, trashed_from TEXT,"
    " starred INTEGER NOT NULL DEFAULT 0, pinned INTEGER NOT NULL DEFAULT 0, snoozed_until INTEGER,"
    " last_ms INTEGER NOT NULL DEFAULT 0, UNIQUE (person_id, conversation))",
    "CREATE TABLE IF NOT EXISTS mail_messages ("
    " id TEXT PRIMARY KEY, thread_id TEXT NOT NULL REFERENCES mail_threads(id), position INTEGER NOT NULL,"
    " from_name TEXT NOT NULL, from_email TEXT NOT NULL, to_json TEXT NOT NULL, cc_json TEXT NOT NULL,"
    " date_ms INTEGER NOT NULL, text TEXT NOT NULL, html TEXT, unread INTEGER NOT NULL, snippet TEXT NOT NULL,"
    " outgoing INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS mail_messages_thread ON mail_messages (thread_id, position)",
    "CREATE TABLE IF NOT EXISTS mail_attachments ("
    " message_id TEXT NOT NULL REFERENCES mail_messages(id), id TEXT NOT NULL, position INTEGER NOT NULL,"
    " name TEXT NOT NULL, mime TEXT NOT NULL, data BLOB NOT NULL, PRIMARY KEY (message_id, id))",
    "CREATE TABLE IF NOT EXISTS mail_labels ("
    " person_id TEXT NOT NULL, id TEXT NOT NULL, name TEXT NOT NULL, PRIMARY KEY (person_id, id))",
    "CREATE TABLE IF NOT EXISTS mail_thread_labels ("
    " thread_id TEXT NOT NULL REFERENCES mail_threads(id), label_id TEXT NOT NULL, PRIMARY KEY (thread_id, label_id))",
    // state: queued, cancelled or sent; params are mail.send's, kept until delivery.
    "CREATE TABLE IF NOT EXISTS mail_outbox ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL, idempotency_key TEXT NOT NULL, state TEXT NOT NULL,"
    " sends_at INTEGER NOT NULL, params TEXT NOT NULL, UNIQUE (person_id, idempotency_key))",
    "CREATE TABLE IF NOT EXISTS mail_reply_drafts ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL, thread_id TEXT NOT NULL, message_id TEXT NOT NULL,"
    " from_name TEXT NOT NULL, from_email TEXT NOT NULL, subject TEXT NOT NULL, preview TEXT NOT NULL,"
    " draft TEXT NOT NULL, status TEXT NOT NULL, created_ms INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS mail_secrets (name TEXT PRIMARY KEY, value BLOB NOT NULL)",
};

// Where a thread sorts: a snoozed thread that has come back sorts from then.
constexpr auto sortKey = "MAX(t.last_ms, COALESCE(t.snoozed_until, 0))"_L1;

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

bool run(QSqlQuery &q)
{
    if (q.exec())
        return true;
    qWarning("workspace mail: %s: %s", qPrintable(q.lastQuery()), qPrintable(q.lastError().text()));
    return false;
}

MailStore::Refusal noThread()
{
    return { 404, u"That conversation does not exist."_s };
}

QJsonObject personJSON(const QString &name, const QString &email)
{
    return { { u"name"_s, name }, { u"email"_s, email } };
}

QString peopleText(const QList<MailStore::Person> &people)
{
    QJsonArray array;
    for (const MailStore::Person &person : people)
        array.append(personJSON(person.name, person.email));
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

QJsonArray peopleFromText(const QString &text)
{
    return QJsonDocument::fromJson(text.toUtf8()).array();
}

QString snippetOf(const QString &text)
{
    static const QRegularExpression space(u"\\s+"_s);
    QString flat = text;
    flat.replace(space, u" "_s);
    flat = flat.trimmed();
    return flat.size() > 140 ? flat.left(139) + u'…' : flat;
}

QString dayTitle(qint64 ms, qint64 at)
{
    const QDate day = QDateTime::fromMSecsSinceEpoch(ms).date();
    const QDate today = QDateTime::fromMSecsSinceEpoch(at).date();
    if (day >= today)
        return u"Today"_s;
    if (day == today.addDays(-1))
        return u"Yesterday"_s;
    return u"Earlier"_s;
}

// "<sort ms>:<thread id>", the last thread of the previous page.
std::optional<std::pair<qint64, QString>> parseCursor(const QString &cursor)
{
    const qsizetype colon = cursor.indexOf(u':');
    bool number = false;
    const qint64 ms = cursor.left(colon).toLongLong(&number);
    if (colon <= 0 || !number || colon + 1 >= cursor.size())
        return std::nullopt;
    return std::pair(ms, cursor.mid(colon + 1));
}

const QHash<QString, QString> &viewTitles()
{
    static const QHash<QString, QString> titles { { u"inbox"_s, u"Inbox"_s }, { u"starred"_s, u"Starred"_s },
        { u"sent"_s, u"Sent"_s }, { u"snoozed"_s, u"Snoozed"_s }, { u"done"_s, u"Done"_s },
        { u"trash"_s, u"Trash"_s } };
    return titles;
}

// Which threads each view lists (:now is the time of the request).
QString viewFilter(const QString &view)
{
    if (view == "inbox"_L1)
        return u"t.folder = 'inbox' AND (t.snoozed_until IS NULL OR t.snoozed_until <= :now)"_s;
    if (view == "starred"_L1)
        return u"t.starred = 1 AND t.folder != 'trash'"_s;
    if (view == "sent"_L1)
        return u"t.folder != 'trash' AND EXISTS (SELECT 1 FROM mail_messages m WHERE m.thread_id = t.id"
               " AND m.outgoing = 1)"_s;
    if (view == "snoozed"_L1)
        return u"t.snoozed_until > :now AND t.folder != 'trash'"_s;
    if (view == "done"_L1)
        return u"t.folder = 'done'"_s;
    return u"t.folder = 'trash'"_s;
}

QList<MailStore::Person> addressesIn(const QJsonValue &value)
{
    QList<MailStore::Person> out;
    for (const QJsonValue &item : value.toArray())
        out.append({ {}, item.toString().trimmed() });
    return out;
}

QJsonObject queuedAnswer(const QString &sendId, qint64 sendsAt)
{
    return { { u"queued"_s, true }, { u"sendId"_s, sendId }, { u"sendsAtMs"_s, sendsAt } };
}

bool isAddress(const QString &text)
{
    static const QRegularExpression address(u"^[^@\\s<>\"]+@[^@\\s<>\"]+\\.[^@\\s<>\"]+$"_s);
    return address.match(text).hasMatch();
}

} // namespace

MailStore::MailStore(QString connection)
    : m_connection(std::move(connection))
{
}

QSqlQuery MailStore::prepare(const QString &sql) const
{
    QSqlQuery q(QSqlDatabase::database(m_connection));
    if (!q.prepare(sql))
        qWarning("workspace mail: could not prepare %s: %s", qPrintable(sql), qPrintable(q.lastError().text()));
    return q;
}

bool MailStore::createSchema()
{
    for (const char *statement : schema) {
        QSqlQuery q = prepare(QString::fromLatin1(statement));
        if (!run(q))
            return false;
    }
    return true;
}

bool MailStore::hasMailboxes() const
{
    QSqlQuery q = prepare(u"SELECT 1 FROM mail_boxes LIMIT 1"_s);
    return run(q) && q.next();
}

bool MailStore::addMailbox(const QString &person, const QString &email, bool connected)
{
    QSqlQuery q = prepare(u"INSERT OR REPLACE INTO mail_boxes (person_id, email, connected) VALUES (?, ?, ?)"_s);
    q.addBindValue(person);
    q.addBindValue(email);
    q.addBindValue(connected ? 1 : 0);
    return run(q);
}

bool MailStore::connect(const QString &person, const QString &email)
{
    return addMailbox(person, mailboxEmail(person).value_or(email), true);
}

std::optional<QString> MailStore::mailboxEmail(const QString &person) const
{
    QSqlQuery q = prepare(u"SELECT email FROM mail_boxes WHERE person_id = ?"_s);
    q.addBindValue(person);
    if (!run(q) || !q.next())
        return std::nullopt;
    return q.value(0).toString();
}

bool MailStore::isConnected(const QString &me) const
{
    QSqlQuery q = prepare(u"SELECT connected FROM mail_boxes WHERE person_id = ?"_s);
    q.addBindValue(me);
    return run(q) && q.next() && q.value(0).toInt() == 1;
}

QJsonObject MailStore::status(const QString &me) const
{
    if (!isConnected(me))
        return { { u"configured"_s, false }, { u"email"_s, u""_s }, { u"gmail"_s, false }, { u"organize"_s, false },
            { u"calendar"_s, false }, { u"sending"_s, false } };
    return { { u"configured"_s, true }, { u"email"_s, mailboxEmail(me).value_or(QString()) }, { u"gmail"_s, true },
        { u"organize"_s, true }, { u"calendar"_s, false }, { u"sending"_s, true } };
}

QString MailStore::addThread(const NewThread &thread, const QString &conversation)
{
    const QString id = BooksSql::newID("thr-"_L1);
    QSqlQuery q = prepare(u"INSERT INTO mail_threads (id, person_id, conversation, subject, category, folder,"
                          " starred, pinned, snoozed_until) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s);
    q.addBindValue(id);
    q.addBindValue(thread.owner);
    q.addBindValue(conversation.isEmpty() ? id : conversation);
    q.addBindValue(thread.subject);
    q.addBindValue(thread.category);
    q.addBindValue(thread.folder);
    q.addBindValue(thread.starred ? 1 : 0);
    q.addBindValue(thread.pinned ? 1 : 0);
    q.addBindValue(thread.snoozedUntil ? QVariant(*thread.snoozedUntil) : QVariant(QMetaType::fromType<qint64>()));
    if (!run(q))
        return {};
    for (const QString &label : thread.labels) {
        QSqlQuery l = prepare(u"INSERT OR IGNORE INTO mail_thread_labels (thread_id, label_id) VALUES (?, ?)"_s);
        l.addBindValue(id);
        l.addBindValue(label);
        run(l);
    }
    return id;
}

QString MailStore::addMessage(const QString &thread, const NewMessage &message, bool outgoing)
{
    const QString id = BooksSql::newID("msg-"_L1);
    QSqlQuery q = prepare(u"INSERT INTO mail_messages (id, thread_id, position, from_name, from_email, to_json,"
                          " cc_json, date_ms, text, html, unread, snippet, outgoing) VALUES (?, ?,"
                          " (SELECT COUNT(*) FROM mail_messages WHERE thread_id = ?), ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s);
    for (const QVariant &value :
        { QVariant(id), QVariant(thread), QVariant(thread), QVariant(message.from.name), QVariant(message.from.email),
            QVariant(peopleText(message.to)), QVariant(peopleText(message.cc)), QVariant(message.dateMs),
            QVariant(message.text), message.html ? QVariant(*message.html) : QVariant(QMetaType::fromType<QString>()),
            QVariant(message.unread ? 1 : 0), QVariant(snippetOf(message.text)), QVariant(outgoing ? 1 : 0) })
        q.addBindValue(value);
    if (!run(q))
        return {};
    for (qsizetype i = 0; i < message.attachments.size(); ++i) {
        const Attachment &file = message.attachments.at(i);
        QSqlQuery a = prepare(u"INSERT INTO mail_attachments (message_id, id, position, name, mime, data)"
                              " VALUES (?, ?, ?, ?, ?, ?)"_s);
        a.addBindValue(id);
        // An inline image is found by its content id, so that is its id.
        a.addBindValue(file.contentId.isEmpty() ? u"att-%1"_s.arg(i + 1) : file.contentId);
        a.addBindValue(int(i));
        a.addBindValue(file.name);
        a.addBindValue(file.mime);
        a.addBindValue(file.data);
        if (!run(a))
            return {};
    }
    touch(thread);
    return id;
}

void MailStore::touch(const QString &thread)
{
    QSqlQuery q = prepare(u"UPDATE mail_threads SET last_ms ="
                          " (SELECT COALESCE(MAX(date_ms), 0) FROM mail_messages WHERE thread_id = ?) WHERE id = ?"_s);
    q.addBindValue(thread);
    q.addBindValue(thread);
    run(q);
}

bool MailStore::addLabel(const QString &person, const QString &id, const QString &name)
{
    QSqlQuery q = prepare(u"INSERT OR REPLACE INTO mail_labels (person_id, id, name) VALUES (?, ?, ?)"_s);
    q.addBindValue(person);
    q.addBindValue(id);
    q.addBindValue(name);
    return run(q);
}

bool MailStore::addDraft(const QString &person, const Draft &draft)
{
    QSqlQuery q = prepare(u"INSERT INTO mail_reply_drafts (id, person_id, thread_id, message_id, from_name,"
                          " from_email, subject, preview, draft, status, created_ms)"
                          " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, 'ready', ?)"_s);
    for (const QVariant &value : { QVariant(BooksSql::newID("drf-"_L1)), QVariant(person), QVariant(draft.threadId),
             QVariant(draft.messageId), QVariant(draft.from.name), QVariant(draft.from.email), QVariant(draft.subject),
             QVariant(draft.preview), QVariant(draft.draft), QVariant(draft.createdMs) })
        q.addBindValue(value);
    return run(q);
}

bool MailStore::owns(const QString &me, const QString &thread) const
{
    QSqlQuery q = prepare(u"SELECT 1 FROM mail_threads WHERE id = ? AND person_id = ?"_s);
    q.addBindValue(thread);
    q.addBindValue(me);
    return run(q) && q.next();
}

QJsonObject MailStore::card(const QString &thread) const
{
    QSqlQuery q = prepare(u"SELECT t.subject, t.category, t.starred, t.pinned, t.last_ms,"
                          " (SELECT COUNT(*) FROM mail_messages WHERE thread_id = t.id),"
                          " (SELECT COUNT(*) FROM mail_messages WHERE thread_id = t.id AND unread = 1),"
                          " EXISTS (SELECT 1 FROM mail_attachments a JOIN mail_messages m ON m.id = a.message_id"
                          "  WHERE m.thread_id = t.id),"
                          " m.from_name, m.from_email, m.snippet"
                          " FROM mail_threads t LEFT JOIN mail_messages m ON m.id ="
                          " (SELECT id FROM mail_messages WHERE thread_id = t.id ORDER BY position DESC LIMIT 1)"
                          " WHERE t.id = ?"_s);
    q.addBindValue(thread);
    if (!run(q) || !q.next())
        return {};
    QJsonArray labels;
    QSqlQuery l = prepare(u"SELECT label_id FROM mail_thread_labels WHERE thread_id = ? ORDER BY label_id"_s);
    l.addBindValue(thread);
    if (run(l))
        while (l.next())
            labels.append(l.value(0).toString());
    return { { u"id"_s, thread }, { u"subject"_s, q.value(0).toString() }, { u"category"_s, q.value(1).toString() },
        { u"starred"_s, q.value(2).toInt() == 1 }, { u"pinned"_s, q.value(3).toInt() == 1 },
        { u"lastMs"_s, q.value(4).toLongLong() }, { u"count"_s, q.value(5).toInt() },
        { u"unread"_s, q.value(6).toInt() > 0 }, { u"hasAttachments"_s, q.value(7).toInt() == 1 },
        { u"from"_s, personJSON(q.value(8).toString(), q.value(9).toString()) },
        { u"snippet"_s, q.value(10).toString() }, { u"labels"_s, labels } };
}

QJsonArray MailStore::cards(QSqlQuery &query) const
{
    QJsonArray out;
    if (!run(query))
        return out;
    while (query.next())
        out.append(card(query.value(0).toString()));
    return out;
}

MailStore::Result<QJsonObject> MailStore::view(
    const QString &me, const QString &view, const std::optional<QString> &cursor)
{
    if (!viewTitles().contains(view))
        return Refusal { 400, u"\"view\" is one of inbox, starred, sent, snoozed, done and trash."_s };
    std::optional<std::pair<qint64, QString>> after;
    if (cursor) {
        after = parseCursor(*cursor);
        if (!after)
            return Refusal { 400, u"That \"cursor\" did not come from this mailbox."_s };
    }
    const qint64 at = now();
    QJsonArray sections;

    // Pinned threads lead the inbox's first page and are not paged.
    const bool pinnedApart = view == "inbox"_L1;
    if (pinnedApart && !after) {
        QSqlQuery q = prepare(u"SELECT t.id FROM mail_threads t WHERE t.person_id = :me AND t.pinned = 1 AND "_s
            + viewFilter(view) + u" ORDER BY "_s + sortKey + u" DESC, t.id DESC"_s);
        q.bindValue(u":me"_s, me);
        q.bindValue(u":now"_s, at);
        const QJsonArray pinned = cards(q);
        if (!pinned.isEmpty())
            sections.append(
                QJsonObject { { u"id"_s, u"pinned"_s }, { u"title"_s, u"Pinned"_s }, { u"threads"_s, pinned } });
    }

    QString sql
        = u"SELECT t.id, "_s + sortKey + u" FROM mail_threads t WHERE t.person_id = :me AND "_s + viewFilter(view);
    if (pinnedApart)
        sql += u" AND t.pinned = 0"_s;
    if (after)
        sql += u" AND ("_s + sortKey + u" < :ms OR ("_s + sortKey + u" = :ms AND t.id < :id))"_s;
    sql += u" ORDER BY "_s + sortKey + u" DESC, t.id DESC LIMIT :limit"_s;
    QSqlQuery q = prepare(sql);
    q.bindValue(u":me"_s, me);
    q.bindValue(u":now"_s, at);
    if (after) {
        q.bindValue(u":ms"_s, after->first);
        q.bindValue(u":id"_s, after->second);
    }
    q.bindValue(u":limit"_s, pageSize + 1);
    if (!run(q))
        return Refusal { 500, u"The mailbox could not be read."_s };
    QList<std::pair<QString, qint64>> rows;
    while (q.next())
        rows.append({ q.value(0).toString(), q.value(1).toLongLong() });
    const bool more = rows.size() > pageSize;
    if (more)
        rows.removeLast();

    // The inbox by day; other views as one section.
    QJsonArray threads;
    QString title;
    const auto flush = [&] {
        if (threads.isEmpty())
            return;
        const QString id = view == "inbox"_L1 ? title.toLower() : view;
        sections.append(QJsonObject { { u"id"_s, id }, { u"title"_s, title }, { u"threads"_s, threads } });
        threads = {};
    };
    for (const auto &[id, ms] : rows) {
        const QString rowTitle = view == "inbox"_L1 ? dayTitle(ms, at) : viewTitles().value(view);
        if (rowTitle != title)
            flush();
        title = rowTitle;
        threads.append(card(id));
    }
    flush();

    QJsonObject page { { u"sections"_s, sections } };
    if (more)
        page.insert(u"nextCursor"_s, u"%1:%2"_s.arg(rows.last().second).arg(rows.last().first));
    return page;
}

QJsonObject MailStore::search(const QString &me, const QString &text) const
{
    QStringList words = text.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
    QString sql = u"SELECT t.id FROM mail_threads t WHERE t.person_id = ? AND t.folder != 'trash'"_s;
    for (qsizetype i = 0; i < words.size(); ++i)
        sql += u" AND EXISTS (SELECT 1 FROM mail_messages m WHERE m.thread_id = t.id AND"
               " (t.subject || ' ' || m.from_name || ' ' || m.from_email || ' ' || m.text) LIKE ? ESCAPE '\\')"_s;
    sql += u" ORDER BY "_s + sortKey + u" DESC, t.id DESC LIMIT 50"_s;
    QSqlQuery q = prepare(sql);
    q.addBindValue(me);
    for (QString word : words) {
        word.replace(u'\\', u"\\\\"_s).replace(u'%', u"\\%"_s).replace(u'_', u"\\_"_s);
        q.addBindValue(QString(u'%' + word + u'%'));
    }
    const QJsonArray found = words.isEmpty() ? QJsonArray() : cards(q);
    QJsonArray sections;
    if (!found.isEmpty())
        sections.append(
            QJsonObject { { u"id"_s, u"results"_s }, { u"title"_s, u"Results"_s }, { u"threads"_s, found } });
    return { { u"sections"_s, sections } };
}

MailStore::Result<QJsonObject> MailStore::thread(const QString &me, const QString &id)
{
    QSqlQuery t = prepare(u"SELECT subject FROM mail_threads WHERE id = ? AND person_id = ?"_s);
    t.addBindValue(id);
    t.addBindValue(me);
    if (!run(t) || !t.next())
        return noThread();
    QSqlQuery q = prepare(u"SELECT id, from_name, from_email, to_json, cc_json, date_ms, text, html, unread, snippet"
                          " FROM mail_messages WHERE thread_id = ? ORDER BY position"_s);
    q.addBindValue(id);
    QJsonArray messages;
    if (!run(q))
        return Refusal { 500, u"The conversation could not be read."_s };
    while (q.next()) {
        QJsonArray files;
        QSqlQuery a = prepare(
            u"SELECT id, name, LENGTH(data), mime FROM mail_attachments WHERE message_id = ? ORDER BY position"_s);
        a.addBindValue(q.value(0));
        if (run(a))
            while (a.next())
                files.append(QJsonObject { { u"id"_s, a.value(0).toString() }, { u"name"_s, a.value(1).toString() },
                    { u"size"_s, a.value(2).toLongLong() }, { u"mime"_s, a.value(3).toString() } });
        QJsonObject message { { u"id"_s, q.value(0).toString() },
            { u"from"_s, personJSON(q.value(1).toString(), q.value(2).toString()) },
            { u"to"_s, peopleFromText(q.value(3).toString()) }, { u"date"_s, q.value(5).toLongLong() },
            { u"text"_s, q.value(6).toString() }, { u"unread"_s, q.value(8).toInt() == 1 },
            { u"snippet"_s, q.value(9).toString() }, { u"attachments"_s, files } };
        const QJsonArray cc = peopleFromText(q.value(4).toString());
        if (!cc.isEmpty())
            message.insert(u"cc"_s, cc);
        if (!q.value(7).isNull())
            message.insert(u"html"_s, q.value(7).toString());
        messages.append(message);
    }
    QSqlQuery read = prepare(u"UPDATE mail_messages SET unread = 0 WHERE thread_id = ?"_s);
    read.addBindValue(id);
    run(read);
    return QJsonObject { { u"thread"_s,
        QJsonObject { { u"id"_s, id }, { u"subject"_s, t.value(0).toString() }, { u"messages"_s, messages },
            { u"readOnly"_s, false } } } };
}

MailStore::Result<QJsonObject> MailStore::attachment(
    const QString &me, const QString &thread, const QString &message, const QString &attachment) const
{
    if (!owns(me, thread))
        return noThread();
    QSqlQuery q = prepare(u"SELECT a.name, a.data FROM mail_attachments a JOIN mail_messages m ON m.id = a.message_id"
                          " WHERE m.thread_id = ? AND a.message_id = ? AND a.id = ?"_s);
    q.addBindValue(thread);
    q.addBindValue(message);
    q.addBindValue(attachment);
    if (!run(q) || !q.next())
        return Refusal { 404, u"That attachment does not exist."_s };
    const QByteArray data = q.value(1).toByteArray();
    return QJsonObject { { u"name"_s, q.value(0).toString() }, { u"size"_s, data.size() },
        { u"dataBase64"_s, QString::fromLatin1(data.toBase64()) } };
}

MailStore::Result<bool> MailStore::modify(const QString &me, const QString &thread, const QString &action)
{
    if (!owns(me, thread))
        return noThread();
    QString sql;
    if (action == "done"_L1)
        sql = u"UPDATE mail_threads SET folder = 'done', snoozed_until = NULL WHERE id = ?"_s;
    else if (action == "inbox"_L1)
        sql = u"UPDATE mail_threads SET folder = 'inbox', snoozed_until = NULL WHERE id = ?"_s;
    else if (action == "trash"_L1)
        sql = u"UPDATE mail_threads SET trashed_from = folder, folder = 'trash' WHERE id = ? AND folder != 'trash'"_s;
    else if (action == "untrash"_L1)
        sql = u"UPDATE mail_threads SET folder = COALESCE(trashed_from, 'inbox'), trashed_from = NULL"
              " WHERE id = ? AND folder = 'trash'"_s;
    else if (action == "unread"_L1)
        sql = u"UPDATE mail_messages SET unread = 1 WHERE id ="
              " (SELECT id FROM mail_messages WHERE thread_id = ? ORDER BY position DESC LIMIT 1)"_s;
    else
        return Refusal { 400, u"\"action\" is one of done, trash, untrash, unread and inbox."_s };
    QSqlQuery q = prepare(sql);
    q.addBindValue(thread);
    return run(q);
}

MailStore::Result<bool> MailStore::pin(const QString &me, const QString &thread, bool pinned)
{
    if (!owns(me, thread))
        return noThread();
    QSqlQuery q = prepare(u"UPDATE mail_threads SET pinned = ? WHERE id = ?"_s);
    q.addBindValue(pinned ? 1 : 0);
    q.addBindValue(thread);
    return run(q);
}

MailStore::Result<bool> MailStore::snooze(const QString &me, const QString &thread, qint64 untilMs)
{
    if (!owns(me, thread))
        return noThread();
    if (untilMs <= now())
        return Refusal { 400, u"Snooze until a time that has not passed."_s };
    // A snoozed thread comes back to the inbox, wherever it was.
    QSqlQuery q = prepare(u"UPDATE mail_threads SET snoozed_until = ?, folder = 'inbox' WHERE id = ?"_s);
    q.addBindValue(untilMs);
    q.addBindValue(thread);
    return run(q);
}

MailStore::Result<bool> MailStore::label(const QString &me, const QString &thread, const QString &label, bool applied)
{
    if (!owns(me, thread))
        return noThread();
    QSqlQuery known = prepare(u"SELECT 1 FROM mail_labels WHERE person_id = ? AND id = ?"_s);
    known.addBindValue(me);
    known.addBindValue(label);
    if (!run(known) || !known.next())
        return Refusal { 404, u"That label does not exist."_s };
    QSqlQuery q = prepare(applied ? u"INSERT OR IGNORE INTO mail_thread_labels (thread_id, label_id) VALUES (?, ?)"_s
                                  : u"DELETE FROM mail_thread_labels WHERE thread_id = ? AND label_id = ?"_s);
    q.addBindValue(thread);
    q.addBindValue(label);
    return run(q);
}

QJsonObject MailStore::labels(const QString &me) const
{
    QSqlQuery q = prepare(u"SELECT id, name FROM mail_labels WHERE person_id = ? ORDER BY name"_s);
    q.addBindValue(me);
    QJsonArray labels;
    if (run(q))
        while (q.next())
            labels.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() } });
    return { { u"labels"_s, labels } };
}

QJsonObject MailStore::accounts(const QString &me) const
{
    QSqlQuery q = prepare(u"SELECT p.name, b.email FROM mail_boxes b JOIN people p ON p.id = b.person_id"
                          " WHERE b.person_id = ? AND b.connected = 1"_s);
    q.addBindValue(me);
    QJsonArray accounts;
    if (run(q) && q.next()) {
        accounts.append(personJSON(q.value(0).toString(), q.value(1).toString()));
        // The owner also answers the company's shared address.
        QSqlQuery owner = prepare(u"SELECT 1 FROM people WHERE id = ? AND owner = 1"_s);
        owner.addBindValue(me);
        if (run(owner) && owner.next())
            accounts.append(personJSON(u"Halvard & Co."_s, u"hello@halvard.example"_s));
    }
    return { { u"accounts"_s, accounts } };
}

MailStore::Result<QJsonObject> MailStore::queueSend(const QString &me, const QJsonObject &params, qint64 delayMs)
{
    const QString key = params.value("idempotencyKey"_L1).toString();
    if (key.isEmpty())
        return Refusal { 400, u"A send needs its draft's \"idempotencyKey\"."_s };
    const QList<Person> to = addressesIn(params.value("to"_L1));
    QList<Person> everyone = to + addressesIn(params.value("cc"_L1)) + addressesIn(params.value("bcc"_L1));
    if (to.isEmpty())
        return Refusal { 400, u"Add a recipient."_s };
    for (const Person &person : everyone)
        if (!isAddress(person.email))
            return Refusal { 400, u"\"%1\" is not an email address."_s.arg(person.email) };
    const QJsonArray files = params.value("attachments"_L1).toArray();
    qint64 total = 0;
    for (const QJsonValue &file : files) {
        const QByteArray::FromBase64Result data = QByteArray::fromBase64Encoding(
            file.toObject().value("dataBase64"_L1).toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        if (!data || file.toObject().value("name"_L1).toString().isEmpty())
            return Refusal { 400, u"Each attachment needs a \"name\" and base64 \"dataBase64\"."_s };
        total += data.decoded.size();
    }
    if (files.size() > maxFiles || total > maxAttachmentBytes)
        return Refusal { 400, u"Attach up to 20 files totaling 18 MB."_s };
    const QJsonValue from = params.value("from"_L1);
    if (!from.isUndefined()) {
        bool allowed = false;
        for (const QJsonValue &account : accounts(me).value("accounts"_L1).toArray())
            allowed = allowed || account.toObject().value("email"_L1) == from;
        if (!allowed)
            return Refusal { 400, u"This mailbox cannot send as that address."_s };
    }
    const QJsonValue replyThread = params.value("threadId"_L1);
    if (replyThread.isString() && !owns(me, replyThread.toString()))
        return noThread();

    QSqlQuery existing
        = prepare(u"SELECT id, state, sends_at FROM mail_outbox WHERE person_id = ? AND idempotency_key = ?"_s);
    existing.addBindValue(me);
    existing.addBindValue(key);
    if (!run(existing))
        return Refusal { 500, u"The message could not be queued."_s };
    const QString body = QString::fromUtf8(QJsonDocument(params).toJson(QJsonDocument::Compact));
    const qint64 sendsAt = now() + delayMs;
    if (existing.next()) {
        const QString id = existing.value(0).toString();
        // A retry of a send that was queued or went out is that send; one
        // that was undone is queued again.
        if (existing.value(1).toString() != "cancelled"_L1)
            return queuedAnswer(id, existing.value(2).toLongLong());
        QSqlQuery again = prepare(u"UPDATE mail_outbox SET state = 'queued', sends_at = ?, params = ? WHERE id = ?"_s);
        again.addBindValue(sendsAt);
        again.addBindValue(body);
        again.addBindValue(id);
        if (!run(again))
            return Refusal { 500, u"The message could not be queued."_s };
        return queuedAnswer(id, sendsAt);
    }
    const QString id = BooksSql::newID("snd-"_L1);
    QSqlQuery q = prepare(u"INSERT INTO mail_outbox (id, person_id, idempotency_key, state, sends_at, params)"
                          " VALUES (?, ?, ?, 'queued', ?, ?)"_s);
    q.addBindValue(id);
    q.addBindValue(me);
    q.addBindValue(key);
    q.addBindValue(sendsAt);
    q.addBindValue(body);
    if (!run(q))
        return Refusal { 500, u"The message could not be queued."_s };
    return queuedAnswer(id, sendsAt);
}

MailStore::Result<QJsonObject> MailStore::cancelSend(const QString &me, const QString &sendId)
{
    deliverDue();
    QSqlQuery q = prepare(u"SELECT state FROM mail_outbox WHERE id = ? AND person_id = ?"_s);
    q.addBindValue(sendId);
    q.addBindValue(me);
    if (!run(q) || !q.next())
        return Refusal { 404, u"That send does not exist."_s };
    const QString state = q.value(0).toString();
    if (state == "queued"_L1) {
        QSqlQuery cancel = prepare(u"UPDATE mail_outbox SET state = 'cancelled' WHERE id = ?"_s);
        cancel.addBindValue(sendId);
        if (!run(cancel))
            return Refusal { 500, u"The send could not be undone."_s };
    }
    return QJsonObject { { u"cancelled"_s, state != "sent"_L1 } };
}

bool MailStore::makeDue(const QString &sendId)
{
    QSqlQuery q = prepare(u"UPDATE mail_outbox SET sends_at = ? WHERE id = ? AND state = 'queued'"_s);
    q.addBindValue(now());
    q.addBindValue(sendId);
    return run(q) && q.numRowsAffected() == 1;
}

std::optional<qint64> MailStore::deliverDue()
{
    QSqlQuery due = prepare(u"SELECT id FROM mail_outbox WHERE state = 'queued' AND sends_at <= ? ORDER BY sends_at"_s);
    due.addBindValue(now());
    QStringList ids;
    if (run(due))
        while (due.next())
            ids.append(due.value(0).toString());
    for (const QString &id : ids) {
        QSqlDatabase db = QSqlDatabase::database(m_connection);
        db.transaction();
        if (deliver(id))
            db.commit();
        else
            db.rollback();
    }
    QSqlQuery next = prepare(u"SELECT MIN(sends_at) FROM mail_outbox WHERE state = 'queued'"_s);
    if (!run(next) || !next.next() || next.value(0).isNull())
        return std::nullopt;
    return next.value(0).toLongLong();
}

bool MailStore::deliver(const QString &sendId)
{
    QSqlQuery q = prepare(u"SELECT o.person_id, o.params, p.name, b.email FROM mail_outbox o"
                          " JOIN people p ON p.id = o.person_id JOIN mail_boxes b ON b.person_id = o.person_id"
                          " WHERE o.id = ?"_s);
    q.addBindValue(sendId);
    if (!run(q) || !q.next())
        return false;
    const QString sender = q.value(0).toString();
    const QJsonObject params = QJsonDocument::fromJson(q.value(1).toString().toUtf8()).object();
    const QString fromEmail = params.value("from"_L1).toString(q.value(3).toString());
    const QString fromName = fromEmail == q.value(3).toString() ? q.value(2).toString() : u"Halvard & Co."_s;

    NewMessage message { .from = { fromName, fromEmail },
        .to = addressesIn(params.value("to"_L1)),
        .cc = addressesIn(params.value("cc"_L1)),
        .dateMs = now(),
        .text = params.value("text"_L1).toString() };
    for (const QJsonValue &item : params.value("attachments"_L1).toArray()) {
        const QJsonObject file = item.toObject();
        message.attachments.append(
            { file.value("name"_L1).toString(), file.value("mimeType"_L1).toString(u"application/octet-stream"_s),
                QByteArray::fromBase64(file.value("dataBase64"_L1).toString().toLatin1()), {} });
    }
    const QString subject = params.value("subject"_L1).toString();

    // The sender's copy: in the replied thread, or a thread of its own.
    QString thread = params.value("threadId"_L1).toString();
    QString conversation;
    if (!thread.isEmpty()) {
        QSqlQuery c = prepare(u"SELECT conversation FROM mail_threads WHERE id = ? AND person_id = ?"_s);
        c.addBindValue(thread);
        c.addBindValue(sender);
        if (run(c) && c.next())
            conversation = c.value(0).toString();
        else
            thread.clear();
    }
    if (thread.isEmpty()) {
        thread = addThread({ .owner = sender, .subject = subject, .category = u"primary"_s, .folder = u"sent"_s });
        conversation = thread;
    }
    if (thread.isEmpty() || addMessage(thread, message, true).isEmpty())
        return false;

    // Each recipient of the company with a mailbox gets it in their inbox,
    // in the same conversation as earlier messages of it.
    QList<Person> everyone = message.to + message.cc + addressesIn(params.value("bcc"_L1));
    QSet<QString> delivered;
    for (const Person &person : everyone) {
        QSqlQuery r = prepare(u"SELECT person_id FROM mail_boxes WHERE LOWER(email) = LOWER(?) AND connected = 1"_s);
        r.addBindValue(person.email);
        if (!run(r) || !r.next())
            continue;
        const QString recipient = r.value(0).toString();
        if (recipient == sender || delivered.contains(recipient))
            continue;
        delivered.insert(recipient);
        QSqlQuery t = prepare(u"SELECT id FROM mail_threads WHERE person_id = ? AND conversation = ?"_s);
        t.addBindValue(recipient);
        t.addBindValue(conversation);
        QString theirs;
        if (run(t) && t.next()) {
            theirs = t.value(0).toString();
            QSqlQuery back = prepare(u"UPDATE mail_threads SET folder = 'inbox', snoozed_until = NULL WHERE id = ?"_s);
            back.addBindValue(theirs);
            run(back);
        } else {
            theirs
                = addThread({ .owner = recipient, .subject = subject, .category = u"primary"_s, .folder = u"inbox"_s },
                    conversation);
        }
        NewMessage copy = message;
        copy.unread = true;
        if (theirs.isEmpty() || addMessage(theirs, copy, false).isEmpty())
            return false;
    }

    const QJsonValue repliedTo = params.value("messageId"_L1);
    if (repliedTo.isString()) {
        QSqlQuery d = prepare(u"UPDATE mail_reply_drafts SET status = 'sent' WHERE person_id = ? AND message_id = ?"_s);
        d.addBindValue(sender);
        d.addBindValue(repliedTo.toString());
        run(d);
    }
    QSqlQuery done = prepare(u"UPDATE mail_outbox SET state = 'sent', params = '{}' WHERE id = ?"_s);
    done.addBindValue(sendId);
    return run(done);
}

QJsonObject MailStore::drafts(const QString &me) const
{
    QSqlQuery q = prepare(u"SELECT id, thread_id, message_id, from_name, from_email, subject, preview, draft, status,"
                          " created_ms FROM mail_reply_drafts WHERE person_id = ? AND status = 'ready'"
                          " ORDER BY created_ms DESC"_s);
    q.addBindValue(me);
    QJsonArray drafts;
    if (run(q))
        while (q.next())
            drafts.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"threadId"_s, q.value(1).toString() },
                { u"messageId"_s, q.value(2).toString() },
                { u"from"_s, personJSON(q.value(3).toString(), q.value(4).toString()) },
                { u"subject"_s, q.value(5).toString() }, { u"preview"_s, q.value(6).toString() },
                { u"draft"_s, q.value(7).toString() }, { u"status"_s, q.value(8).toString() },
                { u"createdMs"_s, QString::number(q.value(9).toLongLong()) } });
    return { { u"enabled"_s, isConnected(me) }, { u"drafts"_s, drafts } };
}

MailStore::Result<bool> MailStore::actOnDraft(
    const QString &me, const QString &id, const QString &action, const QString &instruction)
{
    QSqlQuery q = prepare(u"SELECT from_name, draft FROM mail_reply_drafts WHERE id = ? AND person_id = ?"
                          " AND status = 'ready'"_s);
    q.addBindValue(id);
    q.addBindValue(me);
    if (!run(q) || !q.next())
        return Refusal { 404, u"That draft is no longer waiting."_s };
    if (action == "skip"_L1) {
        QSqlQuery skip = prepare(u"UPDATE mail_reply_drafts SET status = 'skipped' WHERE id = ?"_s);
        skip.addBindValue(id);
        return run(skip);
    }
    if (action != "instruct"_L1 || instruction.trimmed().isEmpty())
        return Refusal { 400, u"Say how the reply should change."_s };
    // The stand-in assistant writes the instruction into the reply.
    const QString first = q.value(0).toString().section(u' ', 0, 0);
    const QString draft = u"Hi %1,\n\n%2\n\nBest,\n"_s.arg(first, instruction.trimmed());
    QSqlQuery again = prepare(u"UPDATE mail_reply_drafts SET draft = ?, created_ms = ? WHERE id = ?"_s);
    again.addBindValue(draft);
    again.addBindValue(now());
    again.addBindValue(id);
    return run(again);
}

QByteArray MailStore::imageSecret()
{
    QSqlQuery q = prepare(u"SELECT value FROM mail_secrets WHERE name = 'images'"_s);
    if (run(q) && q.next())
        return q.value(0).toByteArray();
    QByteArray secret(32, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(secret.data()), secret.size() / 4);
    QSqlQuery store = prepare(u"INSERT INTO mail_secrets (name, value) VALUES ('images', ?)"_s);
    store.addBindValue(secret);
    run(store);
    return secret;
}
