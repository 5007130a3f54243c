#include "workspace/routes/HuddleHub.h"

#include "workspace/WorkspaceResponder.h"
#include "workspace/WorkspaceTokens.h"

#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

bool run(QSqlQuery &q)
{
    if (q.exec())
        return true;
    qWarning("workspace huddles: %s: %s", qPrintable(q.lastQuery()), qPrintable(q.lastError().text()));
    return false;
}

WorkspaceReply notIn()
{
    return WorkspaceReply::error(404, u"You are not in this huddle."_s);
}

} // namespace

HuddleHub::HuddleHub(Settings settings, RoomFor roomFor, NameOf nameOf, QObject *parent)
    : QObject(parent)
    , m_settings(std::move(settings))
    , m_roomFor(std::move(roomFor))
    , m_nameOf(std::move(nameOf))
{
    const QSqlDatabase db = QSqlDatabase::database(m_settings.connection);
    for (const QString &statement : { u"CREATE TABLE IF NOT EXISTS huddles (room_id TEXT PRIMARY KEY, id TEXT NOT NULL,"
                                      " started_by TEXT NOT NULL, version INTEGER NOT NULL, seq INTEGER NOT NULL)"_s,
             u"CREATE TABLE IF NOT EXISTS huddle_members (sid TEXT PRIMARY KEY, room_id TEXT NOT NULL,"
             " person_id TEXT NOT NULL, conn TEXT NOT NULL, muted INTEGER NOT NULL, video INTEGER NOT NULL,"
             " screen INTEGER NOT NULL, position INTEGER NOT NULL)"_s }) {
        QSqlQuery q(db);
        q.prepare(statement);
        run(q);
    }
    load();
    m_sweep.setInterval(std::clamp(m_settings.dropAfterMs / 4, 50, 5'000));
    connect(&m_sweep, &QTimer::timeout, this, &HuddleHub::dropSilent);
    m_sweep.start();
}

// Held polls are answered (with what there is) rather than left hanging.
HuddleHub::~HuddleHub()
{
    const QList<quint64> held = m_waiters.keys();
    for (const quint64 id : held)
        answer(id);
}

HuddleHub::Member *HuddleHub::member(const QString &room, const QString &sid)
{
    const auto huddle = m_huddles.find(room);
    if (huddle == m_huddles.end())
        return nullptr;
    const auto found = std::find_if(
        huddle->members.begin(), huddle->members.end(), [&sid](const Member &m) { return m.sid == sid; });
    return found == huddle->members.end() ? nullptr : &*found;
}

QJsonObject HuddleHub::stateFor(const QString &me, const QString &room) const
{
    const auto huddle = m_huddles.constFind(room);
    if (huddle == m_huddles.constEnd())
        return { { u"active"_s, false }, { u"room_id"_s, room }, { u"joined"_s, false } };
    QJsonArray participants;
    bool joined = false;
    for (const Member &m : huddle->members) {
        joined = joined || m.person == me;
        participants.append(QJsonObject { { u"user_id"_s, m.person }, { u"name"_s, m_nameOf(m.person) },
            { u"conn"_s, m.conn }, { u"muted"_s, m.muted }, { u"video"_s, m.video }, { u"screen"_s, m.screen } });
    }
    return { { u"active"_s, true }, { u"id"_s, huddle->id }, { u"room_id"_s, room },
        { u"room_name"_s, m_roomFor(me, room).value_or(QString()) }, { u"started_by"_s, huddle->startedBy },
        { u"version"_s, huddle->version }, { u"participants"_s, participants }, { u"joined"_s, joined },
        { u"ringing"_s, !joined && huddle->ringing.contains(me) } };
}

WorkspaceReply HuddleHub::join(const QString &me, const QString &room, const QStringList &invite)
{
    if (!m_roomFor(me, room))
        return WorkspaceReply::error(404, u"No such room."_s);
    Huddle &huddle = m_huddles[room];
    if (huddle.id.isEmpty()) {
        huddle.id = u"h-"_s + WorkspaceTokens::random(12);
        huddle.startedBy = me;
    }
    // A person is in a huddle once: joining again (another window, or after
    // a lost connection) replaces the earlier connection, whose poll then
    // hears it is no longer joined.
    const auto earlier = std::find_if(
        huddle.members.cbegin(), huddle.members.cend(), [&me](const Member &m) { return m.person == me; });
    if (earlier != huddle.members.cend())
        huddle.members.erase(earlier);
    const Member joined {
        .person = me, .sid = WorkspaceTokens::random(18), .conn = u"c-"_s + WorkspaceTokens::random(9), .seenMs = now()
    };
    huddle.members.append(joined);
    huddle.ringing.remove(me);
    for (const QString &person : invite) {
        const bool inIt = std::any_of(
            huddle.members.cbegin(), huddle.members.cend(), [&person](const Member &m) { return m.person == person; });
        if (!inIt && m_roomFor(person, room))
            huddle.ringing.insert(person);
    }
    ++huddle.version;
    save(room);
    wake(room);
    return WorkspaceReply::json(QJsonObject { { u"sid"_s, joined.sid }, { u"conn"_s, joined.conn },
        { u"state"_s, stateFor(me, room) }, { u"ice_servers"_s, m_settings.iceServers } });
}

WorkspaceReply HuddleHub::leave(const QString &me, const QString &room, const QString &sid)
{
    // Leaving twice, or after being taken out, is not an error.
    if (const Member *m = member(room, sid); m && m->person == me)
        removeMember(room, sid);
    return WorkspaceReply::ok();
}

WorkspaceReply HuddleHub::mark(const QString &me, const QString &room, const QString &sid, const QJsonObject &marks)
{
    Member *m = member(room, sid);
    if (!m || m->person != me)
        return notIn();
    bool changed = false;
    const auto set = [&marks, &changed](QLatin1StringView key, bool &flag) {
        if (marks.value(key).isBool() && marks.value(key).toBool() != flag) {
            flag = marks.value(key).toBool();
            changed = true;
        }
    };
    set("muted"_L1, m->muted);
    set("video"_L1, m->video);
    set("screen"_L1, m->screen);
    m->seenMs = now();
    if (changed) {
        ++m_huddles[room].version;
        save(room);
        wake(room);
    }
    return WorkspaceReply::json(stateFor(me, room));
}

WorkspaceReply HuddleHub::signal(const QString &me, const QString &room, const QString &sid, const QString &toConn,
    const QString &type, const QJsonObject &data)
{
    Member *from = member(room, sid);
    if (!from || from->person != me)
        return notIn();
    Huddle &huddle = m_huddles[room];
    const bool present = std::any_of(
        huddle.members.cbegin(), huddle.members.cend(), [&toConn](const Member &m) { return m.conn == toConn; });
    if (!present || toConn == from->conn)
        return WorkspaceReply::error(404, u"That connection is not in this huddle."_s);
    from->seenMs = now();
    huddle.signals_.append({ ++huddle.seq, me, from->conn, toConn, type, data });
    save(room);
    wake(room);
    return WorkspaceReply::ok();
}

void HuddleHub::poll(const QString &me, const QString &room, const QString &sid, qint64 after, qint64 version,
    int waitMs, WorkspaceResponder &&responder)
{
    if (Member *m = member(room, sid); m && m->person == me) {
        m->seenMs = now();
        // What the client has handled is not sent again.
        m_huddles[room].signals_.removeIf(
            [conn = m->conn, after](const Signal &s) { return s.toConn == conn && s.seq <= after; });
    }
    const quint64 id = m_nextWaiter++;
    m_waiters.insert(
        id, Waiter { me, room, sid, after, version, std::make_shared<WorkspaceResponder>(std::move(responder)) });
    if (hasNews(m_waiters.value(id)) || waitMs <= 0) {
        answer(id);
        return;
    }
    QTimer::singleShot(std::min(waitMs, longestWaitMs), Qt::PreciseTimer, this, [this, id] { answer(id); });
}

QJsonArray HuddleHub::visible(const QString &me) const
{
    QJsonArray out;
    for (auto it = m_huddles.cbegin(); it != m_huddles.cend(); ++it) {
        if (m_roomFor(me, it.key()))
            out.append(stateFor(me, it.key()));
    }
    return out;
}

bool HuddleHub::hasNews(const Waiter &waiter) const
{
    const auto huddle = m_huddles.constFind(waiter.room);
    if (huddle == m_huddles.constEnd())
        return true;
    const auto mine = std::find_if(huddle->members.cbegin(), huddle->members.cend(),
        [&waiter](const Member &m) { return m.sid == waiter.sid && m.person == waiter.me; });
    if (mine == huddle->members.cend() || huddle->version > waiter.version)
        return true;
    return std::any_of(huddle->signals_.cbegin(), huddle->signals_.cend(),
        [&](const Signal &s) { return s.toConn == mine->conn && s.seq > waiter.after; });
}

WorkspaceReply HuddleHub::pollAnswer(const Waiter &waiter)
{
    const Member *mine = member(waiter.room, waiter.sid);
    const bool joined = mine && mine->person == waiter.me;
    QJsonArray signals_;
    if (joined) {
        for (const Signal &s : std::as_const(m_huddles[waiter.room].signals_)) {
            if (s.toConn == mine->conn && s.seq > waiter.after)
                signals_.append(QJsonObject { { u"seq"_s, s.seq }, { u"from"_s, s.from },
                    { u"from_conn"_s, s.fromConn }, { u"type"_s, s.type }, { u"data"_s, s.data } });
        }
    }
    return WorkspaceReply::json(QJsonObject {
        { u"joined"_s, joined }, { u"signals"_s, signals_ }, { u"state"_s, stateFor(waiter.me, waiter.room) } });
}

void HuddleHub::answer(quint64 waiterId)
{
    const auto found = m_waiters.constFind(waiterId);
    if (found == m_waiters.constEnd())
        return;
    const Waiter waiter = *found;
    m_waiters.erase(found);
    if (Member *m = member(waiter.room, waiter.sid))
        m->seenMs = now();
    waiter.responder->send(pollAnswer(waiter));
}

void HuddleHub::wake(const QString &room)
{
    QList<quint64> ready;
    for (auto it = m_waiters.cbegin(); it != m_waiters.cend(); ++it) {
        if (it->room == room && hasNews(*it))
            ready.append(it.key());
    }
    for (const quint64 id : std::as_const(ready))
        answer(id);
}

void HuddleHub::removeMember(const QString &room, const QString &sid)
{
    Huddle &huddle = m_huddles[room];
    const auto gone = std::find_if(
        huddle.members.cbegin(), huddle.members.cend(), [&sid](const Member &m) { return m.sid == sid; });
    if (gone == huddle.members.cend())
        return;
    const QString conn = gone->conn;
    huddle.members.erase(gone);
    huddle.signals_.removeIf([&conn](const Signal &s) { return s.toConn == conn || s.fromConn == conn; });
    ++huddle.version;
    // The last one out ends it, and the ringing with it.
    if (huddle.members.isEmpty())
        m_huddles.remove(room);
    save(room);
    wake(room);
}

void HuddleHub::dropSilent()
{
    const qint64 cutoff = now() - m_settings.dropAfterMs;
    QList<std::pair<QString, QString>> silent;
    for (auto huddle = m_huddles.cbegin(); huddle != m_huddles.cend(); ++huddle) {
        for (const Member &m : huddle->members) {
            const bool held
                = std::any_of(m_waiters.cbegin(), m_waiters.cend(), [&m](const Waiter &w) { return w.sid == m.sid; });
            if (!held && m.seenMs < cutoff)
                silent.append({ huddle.key(), m.sid });
        }
    }
    for (const auto &[room, sid] : std::as_const(silent))
        removeMember(room, sid);
}

void HuddleHub::save(const QString &room)
{
    QSqlDatabase db = QSqlDatabase::database(m_settings.connection);
    db.transaction();
    QSqlQuery gone(db);
    gone.prepare(u"DELETE FROM huddle_members WHERE room_id = ?"_s);
    gone.addBindValue(room);
    run(gone);
    const auto huddle = m_huddles.constFind(room);
    QSqlQuery head(db);
    if (huddle == m_huddles.constEnd()) {
        head.prepare(u"DELETE FROM huddles WHERE room_id = ?"_s);
        head.addBindValue(room);
        run(head);
        db.commit();
        return;
    }
    head.prepare(u"INSERT OR REPLACE INTO huddles (room_id, id, started_by, version, seq) VALUES (?, ?, ?, ?, ?)"_s);
    for (const QVariant &value : { QVariant(room), QVariant(huddle->id), QVariant(huddle->startedBy),
             QVariant(huddle->version), QVariant(huddle->seq) })
        head.addBindValue(value);
    run(head);
    for (qsizetype i = 0; i < huddle->members.size(); ++i) {
        const Member &m = huddle->members.at(i);
        QSqlQuery member(db);
        member.prepare(u"INSERT INTO huddle_members (sid, room_id, person_id, conn, muted, video, screen, position)"
                       " VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s);
        for (const QVariant &value : { QVariant(m.sid), QVariant(room), QVariant(m.person), QVariant(m.conn),
                 QVariant(m.muted), QVariant(m.video), QVariant(m.screen), QVariant(i) })
            member.addBindValue(value);
        run(member);
    }
    db.commit();
}

void HuddleHub::load()
{
    const QSqlDatabase db = QSqlDatabase::database(m_settings.connection);
    QSqlQuery heads(db);
    heads.prepare(u"SELECT room_id, id, started_by, version, seq FROM huddles"_s);
    if (run(heads)) {
        while (heads.next()) {
            Huddle &huddle = m_huddles[heads.value(0).toString()];
            huddle.id = heads.value(1).toString();
            huddle.startedBy = heads.value(2).toString();
            huddle.version = heads.value(3).toLongLong();
            huddle.seq = heads.value(4).toLongLong();
        }
    }
    QSqlQuery members(db);
    members.prepare(u"SELECT room_id, person_id, sid, conn, muted, video, screen FROM huddle_members"
                    " ORDER BY room_id, position"_s);
    if (!run(members))
        return;
    while (members.next()) {
        const auto huddle = m_huddles.find(members.value(0).toString());
        if (huddle == m_huddles.end())
            continue;
        huddle->members.append({ .person = members.value(1).toString(),
            .sid = members.value(2).toString(),
            .conn = members.value(3).toString(),
            .muted = members.value(4).toBool(),
            .video = members.value(5).toBool(),
            .screen = members.value(6).toBool(),
            .seenMs = now() });
    }
}
