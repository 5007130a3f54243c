#include "workspace/routes/ChatStore.h"

#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;

namespace {

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS chat_rooms ("
    " id TEXT PRIMARY KEY, name TEXT NOT NULL, kind TEXT NOT NULL, private INTEGER NOT NULL DEFAULT 0,"
    " archived INTEGER NOT NULL DEFAULT 0, created_by TEXT NOT NULL, created_at INTEGER NOT NULL,"
    " pair TEXT UNIQUE)",
    "CREATE TABLE IF NOT EXISTS chat_members ("
    " room_id TEXT NOT NULL REFERENCES chat_rooms(id), person_id TEXT NOT NULL REFERENCES people(id),"
    " read_seq INTEGER NOT NULL DEFAULT 0, PRIMARY KEY (room_id, person_id))",
    "CREATE TABLE IF NOT EXISTS chat_messages ("
    " id TEXT PRIMARY KEY, room_id TEXT NOT NULL REFERENCES chat_rooms(id), seq INTEGER NOT NULL,"
    " user_id TEXT NOT NULL REFERENCES people(id), body TEXT NOT NULL, created_at INTEGER NOT NULL,"
    " deleted_at INTEGER, parent_id TEXT, version INTEGER NOT NULL DEFAULT 1, nonce TEXT,"
    " UNIQUE (room_id, seq), UNIQUE (user_id, nonce))",
    "CREATE INDEX IF NOT EXISTS chat_messages_parent ON chat_messages (parent_id)",
    "CREATE TABLE IF NOT EXISTS chat_files ("
    " id TEXT PRIMARY KEY, message_id TEXT NOT NULL REFERENCES chat_messages(id), position INTEGER NOT NULL,"
    " name TEXT NOT NULL, size INTEGER NOT NULL, mime TEXT)",
    "CREATE TABLE IF NOT EXISTS chat_reactions ("
    " message_id TEXT NOT NULL REFERENCES chat_messages(id), person_id TEXT NOT NULL, emoji TEXT NOT NULL,"
    " at INTEGER NOT NULL, PRIMARY KEY (message_id, person_id, emoji))",
    "CREATE TABLE IF NOT EXISTS chat_saves ("
    " message_id TEXT NOT NULL REFERENCES chat_messages(id), person_id TEXT NOT NULL,"
    " PRIMARY KEY (message_id, person_id))",
    "CREATE VIRTUAL TABLE IF NOT EXISTS chat_search USING fts5 (body, message_id UNINDEXED)",
};

// Visible: a public channel, or a room the person belongs to. Archived
// rooms stay readable to those who can see them, but leave the list.
constexpr auto visibleRoom = "(r.kind = 'channel' AND r.private = 0 OR EXISTS (SELECT 1 FROM chat_members m"
                             " WHERE m.room_id = r.id AND m.person_id = :me))"_L1;

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

QString newId(QLatin1StringView prefix)
{
    return prefix + QUuid::createUuid().toString(QUuid::Id128).left(16);
}

bool run(QSqlQuery &q)
{
    if (q.exec())
        return true;
    qWarning("workspace chat: %s: %s", qPrintable(q.lastQuery()), qPrintable(q.lastError().text()));
    return false;
}

ChatStore::Refusal noRoom()
{
    return { 404, u"That room does not exist or is not open to you."_s };
}

ChatStore::Refusal noMessage()
{
    return { 404, u"That message does not exist."_s };
}

// Each word of the search as a quoted FTS5 string, so that no character of
// the text is ever read as query syntax; all words must match.
QString ftsQuery(const QString &text)
{
    QStringList words;
    for (const QString &word : text.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts)) {
        QString quoted = word;
        quoted.replace(u'"', u"\"\""_s);
        words.append(u'"' + quoted + u'"');
    }
    return words.join(u' ');
}

} // namespace

ChatStore::ChatStore(QString connection, QString filesDir)
    : m_connection(std::move(connection))
    , m_filesDir(std::move(filesDir))
{
}

QSqlQuery ChatStore::prepare(const QString &sql) const
{
    QSqlQuery q(QSqlDatabase::database(m_connection));
    if (!q.prepare(sql))
        qWarning("workspace chat: could not prepare %s: %s", qPrintable(sql), qPrintable(q.lastError().text()));
    return q;
}

bool ChatStore::createSchema()
{
    for (const char *statement : schema) {
        QSqlQuery q = prepare(QString::fromLatin1(statement));
        if (!run(q))
            return false;
    }
    return QDir().mkpath(m_filesDir);
}

bool ChatStore::hasRooms() const
{
    QSqlQuery q = prepare(u"SELECT 1 FROM chat_rooms LIMIT 1"_s);
    return run(q) && q.next();
}

QJsonArray ChatStore::team() const
{
    QSqlQuery q = prepare(u"SELECT id, name FROM people ORDER BY position"_s);
    QJsonArray out;
    if (run(q)) {
        while (q.next())
            out.append(QJsonObject {
                { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() }, { u"active"_s, true } });
    }
    return out;
}

QJsonArray ChatStore::rooms(const QString &me) const
{
    // A direct room is named after the other person; unread counts the
    // timeline messages of others after the person's read mark.
    QSqlQuery q = prepare(u"SELECT r.id, r.kind,"
                          " CASE WHEN r.kind = 'dm' THEN (SELECT p.name FROM chat_members o JOIN people p"
                          "  ON p.id = o.person_id WHERE o.room_id = r.id AND o.person_id != :me) ELSE r.name END,"
                          " (SELECT count(*) FROM chat_messages x WHERE x.room_id = r.id AND x.parent_id IS NULL"
                          "  AND x.deleted_at IS NULL AND x.user_id != :me AND x.seq > coalesce((SELECT read_seq"
                          "  FROM chat_members m WHERE m.room_id = r.id AND m.person_id = :me), 0))"
                          " FROM chat_rooms r WHERE r.archived = 0 AND "_s
        + visibleRoom + u" ORDER BY r.kind = 'dm', lower(r.name), r.created_at"_s);
    q.bindValue(u":me"_s, me);
    QJsonArray out;
    if (run(q)) {
        while (q.next())
            out.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"kind"_s, q.value(1).toString() },
                { u"name"_s, q.value(2).toString() }, { u"unread"_s, q.value(3).toLongLong() },
                { u"list_rank"_s, out.size() }, { u"listed"_s, true } });
    }
    return out;
}

bool ChatStore::canSee(const QString &me, const QString &room) const
{
    QSqlQuery q = prepare(u"SELECT 1 FROM chat_rooms r WHERE r.id = :room AND "_s + visibleRoom);
    q.bindValue(u":room"_s, room);
    q.bindValue(u":me"_s, me);
    return run(q) && q.next();
}

void ChatStore::addMember(const QString &room, const QString &person)
{
    QSqlQuery q = prepare(u"INSERT OR IGNORE INTO chat_members (room_id, person_id) VALUES (?, ?)"_s);
    q.addBindValue(room);
    q.addBindValue(person);
    run(q);
}

ChatStore::Result<QString> ChatStore::createDirectRoom(const QString &me, const QString &other)
{
    QSqlQuery person = prepare(u"SELECT 1 FROM people WHERE id = ?"_s);
    person.addBindValue(other);
    if (other == me || !run(person) || !person.next())
        return Refusal { 400, u"Choose another person of the team."_s };
    const QString pair = std::min(me, other) + u'|' + std::max(me, other);
    QSqlQuery existing = prepare(u"SELECT id FROM chat_rooms WHERE pair = ?"_s);
    existing.addBindValue(pair);
    if (run(existing) && existing.next())
        return existing.value(0).toString();
    const QString id = newId("dm-"_L1);
    QSqlQuery q = prepare(u"INSERT INTO chat_rooms (id, name, kind, private, created_by, created_at, pair)"
                          " VALUES (?, '', 'dm', 1, ?, ?, ?)"_s);
    q.addBindValue(id);
    q.addBindValue(me);
    q.addBindValue(now());
    q.addBindValue(pair);
    if (!run(q))
        return Refusal { 500, u"The room could not be created."_s };
    addMember(id, me);
    addMember(id, other);
    return id;
}

ChatStore::Result<QString> ChatStore::createChannel(
    const QString &me, const QString &name, bool isPrivate, const QStringList &members)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > 80)
        return Refusal { 400, u"A channel needs a name of at most 80 characters."_s };
    const QString id = newId("ch-"_L1);
    QSqlQuery q = prepare(u"INSERT INTO chat_rooms (id, name, kind, private, created_by, created_at)"
                          " VALUES (?, ?, 'channel', ?, ?, ?)"_s);
    q.addBindValue(id);
    q.addBindValue(trimmed);
    q.addBindValue(isPrivate);
    q.addBindValue(me);
    q.addBindValue(now());
    if (!run(q))
        return Refusal { 500, u"The channel could not be created."_s };
    addMember(id, me);
    for (const QString &member : members)
        addMember(id, member);
    return id;
}

ChatStore::Result<QJsonObject> ChatStore::settings(const QString &me, const QString &room) const
{
    if (!canSee(me, room))
        return noRoom();
    QSqlQuery q = prepare(u"SELECT name, kind, created_by, private, archived FROM chat_rooms WHERE id = ?"_s);
    q.addBindValue(room);
    if (!run(q) || !q.next())
        return noRoom();
    QSqlQuery m = prepare(u"SELECT person_id FROM chat_members WHERE room_id = ? ORDER BY person_id"_s);
    m.addBindValue(room);
    QJsonArray members;
    if (run(m)) {
        while (m.next())
            members.append(m.value(0).toString());
    }
    return QJsonObject { { u"id"_s, room }, { u"name"_s, q.value(0).toString() }, { u"kind"_s, q.value(1).toString() },
        { u"created_by"_s, q.value(2).toString() }, { u"private"_s, q.value(3).toBool() },
        { u"archived"_s, q.value(4).toBool() }, { u"members"_s, members } };
}

ChatStore::Result<bool> ChatStore::saveSettings(const QString &me, const QString &room, const QString &name,
    bool isPrivate, bool archived, const QStringList &members)
{
    const Result<QJsonObject> current = settings(me, room);
    if (const Refusal *refusal = std::get_if<Refusal>(&current))
        return *refusal;
    if (std::get<QJsonObject>(current).value("kind"_L1).toString() != "channel"_L1)
        return Refusal { 400, u"Only channels have settings."_s };
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > 80)
        return Refusal { 400, u"A channel needs a name of at most 80 characters."_s };
    QSqlQuery q = prepare(u"UPDATE chat_rooms SET name = ?, private = ?, archived = ? WHERE id = ?"_s);
    q.addBindValue(trimmed);
    q.addBindValue(isPrivate);
    q.addBindValue(archived);
    q.addBindValue(room);
    if (!run(q))
        return Refusal { 500, u"The settings could not be saved."_s };
    // Read marks of those who stay are kept.
    QSqlQuery gone = prepare(u"DELETE FROM chat_members WHERE room_id = ? AND person_id NOT IN (SELECT value FROM"
                             " json_each(?))"_s);
    QStringList keep = members;
    keep.append(me);
    gone.addBindValue(room);
    gone.addBindValue(QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(keep)).toJson()));
    run(gone);
    for (const QString &member : keep)
        addMember(room, member);
    return true;
}

QString ChatStore::roomOf(const QString &id) const
{
    QSqlQuery q = prepare(u"SELECT room_id FROM chat_messages WHERE id = ?"_s);
    q.addBindValue(id);
    return run(q) && q.next() ? q.value(0).toString() : QString();
}

std::optional<QJsonObject> ChatStore::messageJSON(const QString &me, const QString &id) const
{
    QSqlQuery q = prepare(u"SELECT x.user_id, p.name, x.body, x.created_at, x.seq, x.deleted_at, x.parent_id,"
                          " x.version, (SELECT count(*) FROM chat_messages c WHERE c.parent_id = x.id"
                          "  AND c.deleted_at IS NULL),"
                          " EXISTS (SELECT 1 FROM chat_saves s WHERE s.message_id = x.id AND s.person_id = :me)"
                          " FROM chat_messages x JOIN people p ON p.id = x.user_id WHERE x.id = :id"_s);
    q.bindValue(u":me"_s, me);
    q.bindValue(u":id"_s, id);
    if (!run(q) || !q.next())
        return std::nullopt;
    const bool deleted = !q.value(5).isNull();
    QJsonObject json { { u"id"_s, id }, { u"user_id"_s, q.value(0).toString() }, { u"author"_s, q.value(1).toString() },
        { u"body"_s, deleted ? QString() : q.value(2).toString() },
        { u"created_at"_s, isoTime(q.value(3).toLongLong()) }, { u"seq"_s, q.value(4).toLongLong() },
        { u"reply_count"_s, q.value(8).toLongLong() }, { u"version"_s, q.value(7).toLongLong() },
        { u"saved"_s, q.value(9).toBool() } };
    if (deleted)
        json.insert(u"deleted_at"_s, isoTime(q.value(5).toLongLong()));
    if (!q.value(6).isNull())
        json.insert(u"parent_id"_s, q.value(6).toString());

    QSqlQuery files = prepare(u"SELECT id, name, size, mime FROM chat_files WHERE message_id = ? ORDER BY position"_s);
    files.addBindValue(id);
    QJsonArray attachments;
    if (!deleted && run(files)) {
        while (files.next())
            attachments.append(
                QJsonObject { { u"id"_s, files.value(0).toString() }, { u"name"_s, files.value(1).toString() },
                    { u"size"_s, files.value(2).toLongLong() }, { u"mime"_s, files.value(3).toString() } });
    }
    json.insert(u"attachments"_s, attachments);

    QSqlQuery reactions = prepare(u"SELECT emoji, count(*), max(person_id = :me) FROM chat_reactions"
                                  " WHERE message_id = :id GROUP BY emoji ORDER BY min(at)"_s);
    reactions.bindValue(u":me"_s, me);
    reactions.bindValue(u":id"_s, id);
    QJsonArray list;
    if (run(reactions)) {
        while (reactions.next())
            list.append(QJsonObject { { u"emoji"_s, reactions.value(0).toString() },
                { u"count"_s, reactions.value(1).toLongLong() }, { u"mine"_s, reactions.value(2).toBool() } });
    }
    json.insert(u"reactions"_s, list);
    return json;
}

ChatStore::Result<QJsonObject> ChatStore::page(
    const QString &me, const QString &room, std::optional<qint64> before, std::optional<QString> parent) const
{
    if (!canSee(me, room))
        return noRoom();
    // One more than a page tells whether older messages remain.
    QSqlQuery q = parent ? prepare(u"SELECT id FROM chat_messages WHERE room_id = :room AND parent_id = :parent"
                                   " ORDER BY seq DESC LIMIT :limit"_s)
                         : prepare(u"SELECT id FROM chat_messages WHERE room_id = :room AND parent_id IS NULL"
                                   " AND seq < :before ORDER BY seq DESC LIMIT :limit"_s);
    q.bindValue(u":room"_s, room);
    if (parent)
        q.bindValue(u":parent"_s, *parent);
    else
        q.bindValue(u":before"_s, before.value_or(std::numeric_limits<qint64>::max()));
    // A thread is read whole.
    q.bindValue(u":limit"_s, parent ? 10000 : pageSize + 1);
    QStringList ids;
    if (run(q)) {
        while (q.next())
            ids.append(q.value(0).toString());
    }
    const bool more = !parent && ids.size() > pageSize;
    if (more)
        ids.removeLast();
    QJsonArray messages;
    for (auto it = ids.crbegin(); it != ids.crend(); ++it) {
        if (const std::optional<QJsonObject> json = messageJSON(me, *it))
            messages.append(*json);
    }
    QSqlQuery last = prepare(u"SELECT coalesce(max(seq), 0) FROM chat_messages WHERE room_id = ?"_s);
    last.addBindValue(room);
    const qint64 lastSeq = run(last) && last.next() ? last.value(0).toLongLong() : 0;
    return QJsonObject { { u"messages"_s, messages }, { u"last_seq"_s, lastSeq }, { u"has_more"_s, more } };
}

ChatStore::Result<QJsonObject> ChatStore::message(const QString &me, const QString &room, const QString &id) const
{
    if (!canSee(me, room))
        return noRoom();
    if (roomOf(id) != room)
        return noMessage();
    return *messageJSON(me, id);
}

ChatStore::Result<QJsonObject> ChatStore::send(const NewMessage &m)
{
    if (!canSee(m.author, m.room))
        return noRoom();
    // A resent message (same author, same nonce) is the stored one.
    if (m.nonce) {
        QSqlQuery known = prepare(u"SELECT id FROM chat_messages WHERE user_id = ? AND nonce = ?"_s);
        known.addBindValue(m.author);
        known.addBindValue(*m.nonce);
        if (run(known) && known.next())
            return *messageJSON(m.author, known.value(0).toString());
    }
    if (m.body.trimmed().isEmpty() && m.files.isEmpty())
        return Refusal { 400, u"A message needs text or a file."_s };
    for (const File &file : m.files) {
        if (file.data.size() > maxFileBytes)
            return Refusal { 413, u"“%1” is larger than 5 MB."_s.arg(file.name) };
        if (file.name.trimmed().isEmpty())
            return Refusal { 400, u"Every file needs a name."_s };
    }
    if (m.parentId && roomOf(*m.parentId) != m.room)
        return Refusal { 400, u"The thread's first message is not in this room."_s };

    // A savepoint rather than a transaction: the demo plants its history
    // inside one transaction of its own.
    QSqlQuery begin = prepare(u"SAVEPOINT chat_send"_s);
    run(begin);
    QSqlQuery next = prepare(u"SELECT coalesce(max(seq), 0) + 1 FROM chat_messages WHERE room_id = ?"_s);
    next.addBindValue(m.room);
    const qint64 seq = run(next) && next.next() ? next.value(0).toLongLong() : 1;
    const QString id = newId("m-"_L1);
    QSqlQuery q = prepare(u"INSERT INTO chat_messages (id, room_id, seq, user_id, body, created_at, parent_id, nonce)"
                          " VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s);
    q.addBindValue(id);
    q.addBindValue(m.room);
    q.addBindValue(seq);
    q.addBindValue(m.author);
    q.addBindValue(m.body);
    q.addBindValue(m.createdAtMs.value_or(now()));
    q.addBindValue(m.parentId ? QVariant(*m.parentId) : QVariant(QMetaType::fromType<QString>()));
    q.addBindValue(m.nonce ? QVariant(*m.nonce) : QVariant(QMetaType::fromType<QString>()));
    bool stored = run(q);
    QSqlQuery indexed = prepare(u"INSERT INTO chat_search (body, message_id) VALUES (?, ?)"_s);
    indexed.addBindValue(m.body);
    indexed.addBindValue(id);
    stored = stored && run(indexed);
    static const QMimeDatabase mimes;
    for (qsizetype i = 0; stored && i < m.files.size(); ++i) {
        const File &file = m.files.at(i);
        const QString fileId = newId("f-"_L1);
        QSaveFile out(QDir(m_filesDir).filePath(fileId));
        stored = out.open(QIODevice::WriteOnly) && out.write(file.data) == file.data.size() && out.commit();
        QSqlQuery f = prepare(
            u"INSERT INTO chat_files (id, message_id, position, name, size, mime) VALUES (?, ?, ?, ?, ?, ?)"_s);
        f.addBindValue(fileId);
        f.addBindValue(id);
        f.addBindValue(i);
        f.addBindValue(file.name);
        f.addBindValue(file.data.size());
        f.addBindValue(mimes.mimeTypeForFileNameAndData(file.name, file.data).name());
        stored = stored && run(f);
    }
    QSqlQuery end = prepare(stored ? u"RELEASE chat_send"_s : u"ROLLBACK TO chat_send"_s);
    run(end);
    if (!stored) {
        QSqlQuery release = prepare(u"RELEASE chat_send"_s);
        run(release);
        return Refusal { 500, u"The message could not be stored."_s };
    }
    // Writing is reading up to there.
    addMember(m.room, m.author);
    QSqlQuery read
        = prepare(u"UPDATE chat_members SET read_seq = max(read_seq, ?) WHERE room_id = ? AND person_id = ?"_s);
    read.addBindValue(seq);
    read.addBindValue(m.room);
    read.addBindValue(m.author);
    run(read);
    return *messageJSON(m.author, id);
}

ChatStore::Result<QJsonObject> ChatStore::edit(
    const QString &me, const QString &room, const QString &id, std::optional<QString> body, qint64 version)
{
    if (!canSee(me, room))
        return noRoom();
    QSqlQuery q = prepare(u"SELECT user_id, version, deleted_at FROM chat_messages WHERE id = ? AND room_id = ?"_s);
    q.addBindValue(id);
    q.addBindValue(room);
    if (!run(q) || !q.next())
        return noMessage();
    if (q.value(0).toString() != me)
        return Refusal { 403, u"Only the author can change a message."_s };
    if (!q.value(2).isNull())
        return Refusal { 409, u"This message was deleted."_s };
    if (q.value(1).toLongLong() != version)
        return Refusal { 409, u"This message was changed in the meantime. Reload it and try again."_s };
    if (body && body->trimmed().isEmpty())
        return Refusal { 400, u"A message needs text; delete it instead."_s };

    QSqlQuery change = body ? prepare(u"UPDATE chat_messages SET body = ?, version = version + 1 WHERE id = ?"_s)
                            : prepare(u"UPDATE chat_messages SET deleted_at = ?, version = version + 1 WHERE id = ?"_s);
    change.addBindValue(body ? QVariant(*body) : QVariant(now()));
    change.addBindValue(id);
    run(change);
    QSqlQuery index = body ? prepare(u"UPDATE chat_search SET body = ? WHERE message_id = ?"_s)
                           : prepare(u"DELETE FROM chat_search WHERE message_id = ?"_s);
    if (body)
        index.addBindValue(*body);
    index.addBindValue(id);
    run(index);
    return *messageJSON(me, id);
}

ChatStore::Result<QJsonObject> ChatStore::react(
    const QString &me, const QString &room, const QString &id, const QString &emoji, bool active)
{
    if (!canSee(me, room))
        return noRoom();
    if (roomOf(id) != room)
        return noMessage();
    if (emoji.isEmpty() || emoji.size() > 16)
        return Refusal { 400, u"Choose an emoji."_s };
    QSqlQuery q = active
        ? prepare(u"INSERT OR IGNORE INTO chat_reactions (message_id, person_id, emoji, at) VALUES (?, ?, ?, ?)"_s)
        : prepare(u"DELETE FROM chat_reactions WHERE message_id = ? AND person_id = ? AND emoji = ?"_s);
    q.addBindValue(id);
    q.addBindValue(me);
    q.addBindValue(emoji);
    if (active)
        q.addBindValue(now());
    run(q);
    return *messageJSON(me, id);
}

ChatStore::Result<QJsonObject> ChatStore::save(const QString &me, const QString &room, const QString &id, bool saved)
{
    if (!canSee(me, room))
        return noRoom();
    if (roomOf(id) != room)
        return noMessage();
    QSqlQuery q = saved ? prepare(u"INSERT OR IGNORE INTO chat_saves (message_id, person_id) VALUES (?, ?)"_s)
                        : prepare(u"DELETE FROM chat_saves WHERE message_id = ? AND person_id = ?"_s);
    q.addBindValue(id);
    q.addBindValue(me);
    run(q);
    return *messageJSON(me, id);
}

ChatStore::Result<bool> ChatStore::markRead(const QString &me, const QString &room, qint64 seq)
{
    if (!canSee(me, room))
        return noRoom();
    addMember(room, me);
    QSqlQuery q = prepare(u"UPDATE chat_members SET read_seq = max(read_seq, min(?, (SELECT coalesce(max(seq), 0)"
                          " FROM chat_messages WHERE room_id = ?))) WHERE room_id = ? AND person_id = ?"_s);
    q.addBindValue(seq);
    q.addBindValue(room);
    q.addBindValue(room);
    q.addBindValue(me);
    return run(q);
}

QJsonArray ChatStore::search(const QString &me, const QString &text) const
{
    QJsonArray out;
    const QString query = ftsQuery(text);
    if (query.isEmpty())
        return out;
    QSqlQuery q = prepare(u"SELECT x.id, x.room_id, x.parent_id, x.body, p.name,"
                          " CASE WHEN r.kind = 'dm' THEN (SELECT n.name FROM chat_members o JOIN people n"
                          "  ON n.id = o.person_id WHERE o.room_id = r.id AND o.person_id != :me) ELSE r.name END,"
                          " x.created_at FROM chat_search s JOIN chat_messages x ON x.id = s.message_id"
                          " JOIN chat_rooms r ON r.id = x.room_id JOIN people p ON p.id = x.user_id"
                          " WHERE chat_search MATCH :query AND x.deleted_at IS NULL AND "_s
        + visibleRoom + u" ORDER BY x.created_at DESC LIMIT 50"_s);
    q.bindValue(u":me"_s, me);
    q.bindValue(u":query"_s, query);
    if (run(q)) {
        while (q.next()) {
            QJsonObject hit { { u"id"_s, q.value(0).toString() }, { u"room_id"_s, q.value(1).toString() },
                { u"body"_s, q.value(3).toString() }, { u"author"_s, q.value(4).toString() },
                { u"room_name"_s, q.value(5).toString() }, { u"created_at"_s, isoTime(q.value(6).toLongLong()) } };
            if (!q.value(2).isNull())
                hit.insert(u"parent_id"_s, q.value(2).toString());
            out.append(hit);
        }
    }
    return out;
}

ChatStore::Result<ChatStore::File> ChatStore::file(const QString &me, const QString &room, const QString &id) const
{
    if (!canSee(me, room))
        return noRoom();
    QSqlQuery q = prepare(u"SELECT f.name FROM chat_files f JOIN chat_messages x ON x.id = f.message_id"
                          " WHERE f.id = ? AND x.room_id = ? AND x.deleted_at IS NULL"_s);
    q.addBindValue(id);
    q.addBindValue(room);
    if (!run(q) || !q.next())
        return Refusal { 404, u"That file does not exist."_s };
    QFile in(QDir(m_filesDir).filePath(id));
    if (!in.open(QIODevice::ReadOnly))
        return Refusal { 404, u"That file is missing from the workspace."_s };
    return File { q.value(0).toString(), in.readAll() };
}
