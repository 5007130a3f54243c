#include "workspace/WorkspaceAgent.h"

#include "workspace/WorkspaceStore.h"

#include <QDateTime>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

// A request waits this long before it starts, and works this long (twice
// that in process mode): slow enough that a person sees every state.
constexpr int tickMs = 600;
constexpr qint64 startAfterMs = 600;
constexpr qint64 workMs = 1200;

const QString columns = u"id, content, status, reply, created_at, origin, page, title"_s;

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

QVariant nullable(const std::optional<QString> &text)
{
    return text ? QVariant(*text) : QVariant(QMetaType::fromType<QString>());
}

QJsonObject requestFrom(const QSqlQuery &q)
{
    QJsonObject json { { u"id"_s, q.value(0).toString() }, { u"content"_s, q.value(1).toString() },
        { u"status"_s, q.value(2).toString() },
        { u"created_at"_s,
            QDateTime::fromMSecsSinceEpoch(q.value(4).toLongLong(), Qt::UTC).toString(Qt::ISODateWithMs) } };
    const QLatin1StringView optional[] = { "reply"_L1, "origin"_L1, "page"_L1, "title"_L1 };
    const int at[] = { 3, 5, 6, 7 };
    for (int i = 0; i < 4; ++i) {
        if (!q.value(at[i]).isNull())
            json.insert(optional[i], q.value(at[i]).toString());
    }
    return json;
}

// Words that mean money would move or data would go: such a request is
// never done on the asker's word alone.
bool needsReview(const QString &content)
{
    static const QRegularExpression guarded(
        u"\\b(pay|pays|paying|payment|payments|payroll|refund|refunds|transfer|wire|charge|"
        "delete|deletes|remove|erase|wipe|purge)\\b"_s);
    return guarded.match(content).hasMatch();
}

bool mentions(const QString &content, std::initializer_list<QLatin1StringView> words)
{
    return std::any_of(
        words.begin(), words.end(), [&content](QLatin1StringView word) { return content.contains(word); });
}

const QString skillList = u"Here is what I can do in this workspace:\n"
                          "- tell you who is on the team and their roles\n"
                          "- list the Google services you have connected\n"
                          "- count where you are signed in\n"
                          "Anything that moves money or deletes data waits for the owner's review."_s;

} // namespace

WorkspaceAgent::WorkspaceAgent(WorkspaceStore &store, WorkspaceOptions::Agent mode)
    : m_store(store)
    , m_mode(mode)
{
    plantDemo();
    if (online()) {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { step(); });
        m_timer.start(tickMs);
    }
}

QSqlQuery WorkspaceAgent::prepare(const QString &sql) const
{
    QSqlQuery q(m_store.database());
    if (!q.prepare(sql))
        qWarning("workspace: could not prepare an agent statement: %s", qPrintable(q.lastError().text()));
    return q;
}

QString WorkspaceAgent::ask(const QString &personId, const Ask &ask)
{
    if (ask.requestKey) {
        QSqlQuery known = prepare(u"SELECT id FROM agent_requests WHERE person_id = ? AND request_key = ?"_s);
        known.addBindValue(personId);
        known.addBindValue(*ask.requestKey);
        if (known.exec() && known.next())
            return known.value(0).toString();
    }
    const QString id = u"ar-"_s + QUuid::createUuid().toString(QUuid::Id128).left(12);
    QSqlQuery q = prepare(u"INSERT INTO agent_requests (id, person_id, request_key, content, status, created_at,"
                          " origin, page, run, changed_at) VALUES (?, ?, ?, ?, 'queued', ?, ?, ?, ?, ?)"_s);
    const qint64 at = now();
    for (const QVariant &value : { QVariant(id), QVariant(personId), nullable(ask.requestKey), QVariant(ask.content),
             QVariant(at), nullable(ask.origin), nullable(ask.page), QVariant(ask.run), QVariant(at) })
        q.addBindValue(value);
    if (!q.exec())
        qWarning("workspace: could not store an agent request: %s", qPrintable(q.lastError().text()));
    return id;
}

QJsonArray WorkspaceAgent::select(const QString &where, const QString &value) const
{
    QSqlQuery q = prepare(u"SELECT %1 FROM agent_requests WHERE %2 = ? ORDER BY created_at, id"_s.arg(columns, where));
    q.addBindValue(value);
    QJsonArray out;
    if (q.exec()) {
        while (q.next())
            out.append(requestFrom(q));
    }
    return out;
}

QJsonArray WorkspaceAgent::requests(const QString &personId) const
{
    return select(u"person_id"_s, personId);
}

QJsonArray WorkspaceAgent::blocked() const
{
    return select(u"status"_s, u"blocked"_s);
}

bool WorkspaceAgent::remove(const QString &personId, const QString &id)
{
    QSqlQuery q = prepare(u"DELETE FROM agent_requests WHERE id = ? AND person_id = ?"_s);
    q.addBindValue(id);
    q.addBindValue(personId);
    return q.exec() && q.numRowsAffected() > 0;
}

bool WorkspaceAgent::rename(const QString &personId, const QString &id, const QString &title)
{
    QSqlQuery q = prepare(u"UPDATE agent_requests SET title = ? WHERE id = ? AND person_id = ?"_s);
    q.addBindValue(title);
    q.addBindValue(id);
    q.addBindValue(personId);
    return q.exec() && q.numRowsAffected() > 0;
}

std::optional<QString> WorkspaceAgent::resume(
    const QString &id, Decision decision, const QString &reconciliation, const QString &reviewer)
{
    const bool approved = decision == Decision::Approve;
    // An approved request goes back to work and the worker finishes it; a
    // declined one ends here with the reviewer's words.
    const QString status = approved ? u"running"_s : u"failed"_s;
    std::optional<QString> reply;
    if (!approved) {
        reply = reconciliation.isEmpty() ? u"Declined by %1."_s.arg(reviewer)
                                         : u"Declined by %1: %2"_s.arg(reviewer, reconciliation);
    }
    QSqlQuery q = prepare(u"UPDATE agent_requests SET status = ?, reply = ?, decision = ?, reconciliation = ?,"
                          " decided_by = ?, changed_at = ? WHERE id = ? AND status = 'blocked'"_s);
    for (const QVariant &value : { QVariant(status), nullable(reply), QVariant(approved ? u"approve"_s : u"decline"_s),
             QVariant(reconciliation), QVariant(reviewer), QVariant(now()), QVariant(id) })
        q.addBindValue(value);
    if (!q.exec() || q.numRowsAffected() == 0)
        return std::nullopt;
    return status;
}

void WorkspaceAgent::step()
{
    const qint64 at = now();
    QSqlQuery start = prepare(u"UPDATE agent_requests SET status = 'running', changed_at = ?"
                              " WHERE status = 'queued' AND changed_at <= ?"_s);
    start.addBindValue(at);
    start.addBindValue(at - startAfterMs);
    start.exec();

    QSqlQuery due = prepare(u"SELECT id, person_id, content, run, decision, reconciliation, decided_by"
                            " FROM agent_requests WHERE status = 'running'"
                            " AND changed_at <= ? - (CASE run WHEN 'process' THEN 2 ELSE 1 END) * ?"_s);
    due.addBindValue(at);
    due.addBindValue(workMs);
    if (!due.exec())
        return;
    struct Finished {
        QString id;
        Outcome outcome;
    };
    QList<Finished> finished;
    while (due.next()) {
        if (due.value(4).toString() == "approve"_L1) {
            const QString note = due.value(5).toString();
            finished.append({ due.value(0).toString(),
                { u"done"_s,
                    u"Approved by %1%2.\n\nNothing was moved or deleted: the assistant of this local workspace answers "
                    "questions but does not act on the books, the terminal or anyone's records, so the request "
                    "ends here."_s.arg(
                        due.value(6).toString(), note.isEmpty() ? QString() : u" (\"%1\")"_s.arg(note)) } });
        } else {
            finished.append({ due.value(0).toString(),
                work(due.value(1).toString(), due.value(2).toString().toLower(), due.value(3).toString()) });
        }
    }
    for (const Finished &done : finished) {
        QSqlQuery q = prepare(u"UPDATE agent_requests SET status = ?, reply = ?, changed_at = ? WHERE id = ?"_s);
        for (const QVariant &value :
            { QVariant(done.outcome.status), nullable(done.outcome.reply), QVariant(at), QVariant(done.id) })
            q.addBindValue(value);
        q.exec();
    }
}

WorkspaceAgent::Outcome WorkspaceAgent::work(const QString &personId, const QString &content, const QString &run) const
{
    if (needsReview(content))
        return { u"blocked"_s, std::nullopt };

    QString reply;
    QString source;
    if (mentions(content, { "what can you do"_L1, "help"_L1 })) {
        reply = skillList;
        source = u"my own list of skills"_s;
    } else if (mentions(content, { "team"_L1, "who "_L1, "people"_L1, "colleague"_L1 })) {
        const QList<WorkspacePerson> people = m_store.people();
        reply = u"%1 people work in this workspace:\n"_s.arg(people.size());
        for (const WorkspacePerson &person : people)
            reply += u"- %1, %2%3\n"_s.arg(person.name, person.role, person.owner ? u" (owner)"_s : QString());
        reply.chop(1);
        source = u"the workspace's people"_s;
    } else if (mentions(content, { "google"_L1, "connected"_L1, "connection"_L1 })) {
        const QStringList services = m_store.googleConnections(personId);
        reply = services.isEmpty() ? u"You have not connected any Google service yet. Connect one in Settings."_s
                                   : u"You have connected: %1."_s.arg(services.join(u", "_s));
        source = u"your Google connections"_s;
    } else if (mentions(content, { "signed in"_L1, "session"_L1, "devices"_L1 })) {
        QSqlQuery q = prepare(u"SELECT COUNT(*) FROM sessions WHERE person_id = ? AND ended_at IS NULL"_s);
        q.addBindValue(personId);
        const int count = q.exec() && q.next() ? q.value(0).toInt() : 0;
        reply = count == 1 ? u"You are signed in in one place: here."_s
                           : u"You are signed in in %1 places. Settings can sign out the others."_s.arg(count);
        source = u"your sessions"_s;
    } else {
        return { u"failed"_s, u"I can't do that yet.\n\n"_s + skillList };
    }
    if (run == "process"_L1)
        reply += u"\n\nHow I worked: I read %1 and wrote this answer from it."_s.arg(source);
    return { u"done"_s, reply };
}

void WorkspaceAgent::plantDemo()
{
    QSqlQuery count = prepare(u"SELECT COUNT(*) FROM agent_requests"_s);
    if (!count.exec() || !count.next() || count.value(0).toInt() > 0)
        return;
    struct Demo {
        QString personId;
        QString content;
        QString title;
        qint64 ageMs;
    };
    constexpr qint64 hour = 3600 * 1000;
    const Demo demos[] = {
        { u"p-maren"_s, u"Who is on the team?"_s, u"Team roles"_s, 26 * hour },
        { u"p-maren"_s, u"Which Google services are connected?"_s, QString(), 25 * hour },
        { u"p-tomas"_s, u"Refund invoice 1042 to Lumen Bakery"_s, QString(), 2 * hour },
    };
    for (const Demo &demo : demos) {
        const Outcome outcome = work(demo.personId, demo.content.toLower(), u"fast"_s);
        QSqlQuery q = prepare(u"INSERT INTO agent_requests (id, person_id, content, status, reply, created_at, title,"
                              " run, changed_at) VALUES (?, ?, ?, ?, ?, ?, ?, 'fast', ?)"_s);
        const qint64 at = now() - demo.ageMs;
        for (const QVariant &value :
            { QVariant(u"ar-"_s + QUuid::createUuid().toString(QUuid::Id128).left(12)), QVariant(demo.personId),
                QVariant(demo.content), QVariant(outcome.status), nullable(outcome.reply), QVariant(at),
                demo.title.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(demo.title), QVariant(at) })
            q.addBindValue(value);
        q.exec();
    }
}
