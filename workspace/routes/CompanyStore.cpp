#include "workspace/routes/CompanyStore.h"

#include "workspace/WorkspaceSeed.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::run;
using BooksSql::single;

namespace {

constexpr qsizetype nameLimit = 80;
const QStringList decisions { u"adopt"_s, u"later"_s, u"decline"_s };

QString isoTime(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(Qt::ISODateWithMs);
}

QJsonValue optionalText(const QVariant &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(value.toString());
}

QString nameRefusal(const QString &name)
{
    if (name.isEmpty())
        return u"A name cannot be empty."_s;
    if (name.size() > nameLimit)
        return u"A name is at most %1 characters."_s.arg(nameLimit);
    return {};
}

// The apps of a body, when every one is an app of the company; an app named
// twice counts once.
std::optional<QStringList> appsOf(const QJsonObject &body)
{
    if (!body.value("apps"_L1).isArray())
        return std::nullopt;
    const QStringList known = WorkspaceSeed::allApps();
    QStringList apps;
    for (const QJsonValue &value : body.value("apps"_L1).toArray()) {
        if (!known.contains(value.toString()))
            return std::nullopt;
        if (!apps.contains(value.toString()))
            apps.append(value.toString());
    }
    return apps;
}

QString appsText(const QStringList &apps)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(apps)).toJson(QJsonDocument::Compact));
}

const QString unknownApp = u"Apps are chosen from: %1."_s;

} // namespace

CompanyStore::CompanyStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool CompanyStore::isOwner(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->owner;
}

bool CompanyStore::mayOpen(const QString &me, const QString &app) const
{
    return m_store.opens(me, app);
}

bool CompanyStore::hasHandbook() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM company_sops"_s) > 0;
}

WorkspaceReply CompanyStore::rename(const QString &me, const QJsonObject &body)
{
    const QString name = body.value("name"_L1).toString().simplified();
    if (const QString refusal = nameRefusal(name); !refusal.isEmpty())
        return WorkspaceReply::error(400, refusal);
    run(m_store.database(), u"UPDATE people SET name = ? WHERE id = ?"_s, { name, me });
    return WorkspaceReply::ok();
}

WorkspaceReply CompanyStore::search(const QString &me, const QString &query) const
{
    const bool owner = isOwner(me);
    const QString needle = query.simplified();
    QJsonArray found;
    for (const WorkspacePerson &person : m_store.people()) {
        const bool matches = needle.isEmpty() || person.name.contains(needle, Qt::CaseInsensitive)
            || person.email.contains(needle, Qt::CaseInsensitive) || person.role.contains(needle, Qt::CaseInsensitive);
        if (!matches)
            continue;
        QJsonObject row { { u"id"_s, person.id }, { u"name"_s, person.name }, { u"email"_s, person.email },
            { u"role"_s, person.role }, { u"owner"_s, person.owner } };
        if (owner)
            row.insert(u"apps"_s, QJsonArray::fromStringList(person.apps));
        found.append(row);
    }
    return WorkspaceReply::json(found);
}

WorkspaceReply CompanyStore::createMember(const QJsonObject &body)
{
    const QString name = body.value("name"_L1).toString().simplified();
    const QString email = body.value("email"_L1).toString().trimmed().toLower();
    const QString role = body.value("role"_L1).toString().simplified();
    if (const QString refusal = nameRefusal(name); !refusal.isEmpty())
        return WorkspaceReply::error(400, refusal);
    const qsizetype at = email.indexOf(u'@');
    if (at <= 0 || at == email.size() - 1 || email.contains(u' '))
        return WorkspaceReply::error(400, u"That is not an email address."_s);
    if (m_store.personByEmail(email))
        return WorkspaceReply::error(409, u"Someone on the team already signs in with that address."_s);
    const std::optional<QStringList> apps = appsOf(body);
    if (!apps)
        return WorkspaceReply::error(400, unknownApp.arg(WorkspaceSeed::allApps().join(u", "_s)));
    const QString id = newID("p-"_L1);
    m_store.addPerson({ .id = id,
                          .name = name,
                          .email = email,
                          .role = role.isEmpty() ? u"member"_s : role,
                          .owner = false,
                          .books_owner = false,
                          .apps = *apps,
                          .background = std::nullopt,
                          .accent = std::nullopt,
                          .text_size = std::nullopt },
        int(single(m_store.database(), u"SELECT COUNT(*) FROM people"_s)));
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } });
}

WorkspaceReply CompanyStore::updateAccess(const QString &id, const QJsonObject &body)
{
    const std::optional<WorkspacePerson> person = m_store.person(id);
    if (!person)
        return WorkspaceReply::error(404, u"No such person."_s);
    if (person->owner)
        return WorkspaceReply::error(400, u"The owner always has every app."_s);
    const std::optional<QStringList> apps = appsOf(body);
    if (!apps)
        return WorkspaceReply::error(400, unknownApp.arg(WorkspaceSeed::allApps().join(u", "_s)));
    run(m_store.database(), u"UPDATE people SET apps = ? WHERE id = ?"_s, { appsText(*apps), id });
    return WorkspaceReply::ok();
}

WorkspaceReply CompanyStore::sops() const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT s.id, s.title, s.category, s.body, p.name, s.updated_at FROM company_sops s"
        " JOIN people p ON p.id = s.author_id ORDER BY s.category, s.title"_s);
    QJsonArray rows;
    while (q.next()) {
        rows.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
            { u"category"_s, q.value(2).toString() }, { u"body"_s, q.value(3).toString() },
            { u"author_name"_s, q.value(4).toString() }, { u"updated_at"_s, isoTime(q.value(5).toLongLong()) } });
    }
    return WorkspaceReply::json(rows);
}

namespace {

const QString postColumns = u"SELECT c.id, c.title, c.body, a.name, c.created_at,"
                            " EXISTS (SELECT 1 FROM company_post_reads r WHERE r.post_id = c.id AND r.person_id = ?),"
                            " c.decision, d.name, c.version FROM company_posts c JOIN people a ON a.id = c.author_id"
                            " LEFT JOIN people d ON d.id = c.decided_by"_s;

QJsonObject postFrom(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
        { u"body"_s, q.value(2).toString() }, { u"author_name"_s, q.value(3).toString() },
        { u"created_at"_s, isoTime(q.value(4).toLongLong()) }, { u"read"_s, q.value(5).toBool() },
        { u"decision"_s, optionalText(q.value(6)) }, { u"decided_by_name"_s, optionalText(q.value(7)) },
        { u"version"_s, q.value(8).toLongLong() } };
}

} // namespace

WorkspaceReply CompanyStore::posts(const QString &me) const
{
    QSqlQuery q = run(m_store.database(), postColumns + u" ORDER BY c.created_at DESC"_s, { me });
    QJsonArray rows;
    while (q.next())
        rows.append(postFrom(q));
    return WorkspaceReply::json(rows);
}

QJsonObject CompanyStore::post(const QString &me, const QString &id) const
{
    QSqlQuery q = run(m_store.database(), postColumns + u" WHERE c.id = ?"_s, { me, id });
    return q.next() ? postFrom(q) : QJsonObject();
}

WorkspaceReply CompanyStore::markRead(const QString &me, const QString &id)
{
    if (post(me, id).isEmpty())
        return WorkspaceReply::error(404, u"No such post."_s);
    setRead(id, me);
    return WorkspaceReply::ok();
}

WorkspaceReply CompanyStore::decide(const QString &me, const QString &id, const QJsonObject &body)
{
    const QJsonObject before = post(me, id);
    if (before.isEmpty())
        return WorkspaceReply::error(404, u"No such post."_s);
    const QString decision = body.value("decision"_L1).toString();
    if (!decisions.contains(decision))
        return WorkspaceReply::error(400, u"A decision is one of: %1."_s.arg(decisions.join(u", "_s)));
    if (body.value("version"_L1).toInteger() != before.value("version"_L1).toInteger()) {
        const QString who = before.value("decided_by_name"_L1).toString();
        return WorkspaceReply::json(
            QJsonObject { { u"error"_s,
                              u"%1 decided this post in the meantime; it now shows their decision."_s.arg(
                                  who.isEmpty() ? u"Someone"_s : who) },
                { u"post"_s, before } },
            409);
    }
    setDecision(id, decision, me);
    setRead(id, me);
    return WorkspaceReply::json(post(me, id));
}

void CompanyStore::addSop(
    const QString &title, const QString &category, const QString &body, const QString &authorId, qint64 updatedAtMs)
{
    run(m_store.database(),
        u"INSERT INTO company_sops (id, title, category, body, author_id, updated_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { newID("sop-"_L1), title, category, body, authorId, updatedAtMs });
}

QString CompanyStore::addPost(const QString &title, const QString &body, const QString &authorId, qint64 createdAtMs)
{
    const QString id = newID("post-"_L1);
    run(m_store.database(),
        u"INSERT INTO company_posts (id, title, body, author_id, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { id, title, body, authorId, createdAtMs });
    return id;
}

void CompanyStore::setDecision(const QString &postId, const QString &decision, const QString &personId)
{
    run(m_store.database(),
        u"UPDATE company_posts SET decision = ?, decided_by = ?, version = version + 1 WHERE id = ?"_s,
        { decision, personId, postId });
}

void CompanyStore::setRead(const QString &postId, const QString &personId)
{
    run(m_store.database(), u"INSERT OR IGNORE INTO company_post_reads (post_id, person_id) VALUES (?, ?)"_s,
        { postId, personId });
}
