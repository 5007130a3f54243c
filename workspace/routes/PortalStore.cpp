#include "workspace/routes/PortalStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/WorkspaceTokens.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QLocale>
#include <QRegularExpression>
#include <QSqlQuery>

#include <tuple>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::run;
using BooksSql::single;

namespace {

const QString portalsApp = u"Clients"_s;
const QStringList statuses { u"live"_s, u"paused"_s, u"setup"_s };
constexpr qsizetype welcomeLimit = 1000;
constexpr qsizetype titleLimit = 200;

const QString accountColumns
    = u"SELECT c.id, c.name, COALESCE(a.status, 'setup'), COALESCE(a.welcome, ''), a.lead_key_tail,"
      " a.pilo_key_tail, (SELECT COUNT(*) FROM portals_people pp WHERE pp.client_id = c.id),"
      " (SELECT COUNT(*) FROM portals_alerts al WHERE al.client_id = c.id AND al.acknowledged_at IS NULL),"
      " a.refreshed_at, COALESCE(a.version, 0)"
      " FROM clients c LEFT JOIN portals_accounts a ON a.client_id = c.id WHERE c.board_id = 'customers'"_s;

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

QJsonValue optionalText(const QVariant &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(value.toString());
}

QString isoTime(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(Qt::ISODateWithMs);
}

QJsonValue optionalTime(const QVariant &value)
{
    return value.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(isoTime(value.toLongLong()));
}

bool isMonth(const QString &month)
{
    static const QRegularExpression pattern(u"^\\d{4}-(0[1-9]|1[0-2])$"_s);
    return pattern.match(month).hasMatch();
}

QString currentMonth()
{
    return QDateTime::currentDateTimeUtc().toString(u"yyyy-MM"_s);
}

const WorkspaceReply ok = WorkspaceReply::json(QJsonObject { { u"ok"_s, true } });
const WorkspaceReply refusedKey = WorkspaceReply::error(401, u"That portal key is not valid."_s);

WorkspaceReply noClient()
{
    return WorkspaceReply::error(404, u"No such client."_s);
}

} // namespace

PortalStore::PortalStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool PortalStore::mayUse(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->apps.contains(portalsApp);
}

bool PortalStore::hasPortals() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM portals_accounts"_s) > 0;
}

bool PortalStore::isClient(const QString &client) const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM clients WHERE id = ? AND board_id = 'customers'"_s,
               { client })
        > 0;
}

void PortalStore::ensureAccount(const QString &client)
{
    run(m_store.database(),
        u"INSERT OR IGNORE INTO portals_accounts (client_id, status, welcome) VALUES (?, 'setup', '')"_s, { client });
}

QJsonArray PortalStore::accounts(const QString &where, const QVariantList &values) const
{
    QSqlQuery q = run(m_store.database(),
        accountColumns + where
            + u" ORDER BY CASE a.status WHEN 'live' THEN 0 WHEN 'paused' THEN 1 ELSE 2 END, c.name, c.id"_s,
        values);
    QJsonArray out;
    while (q.next()) {
        out.append(QJsonObject { { u"client_id"_s, q.value(0).toString() }, { u"client_name"_s, q.value(1).toString() },
            { u"status"_s, q.value(2).toString() }, { u"welcome"_s, q.value(3).toString() },
            { u"lead_key_tail"_s, optionalText(q.value(4)) }, { u"pilo_key_tail"_s, optionalText(q.value(5)) },
            { u"people_count"_s, q.value(6).toLongLong() }, { u"open_alerts"_s, q.value(7).toLongLong() },
            { u"refreshed_at"_s, optionalTime(q.value(8)) }, { u"version"_s, q.value(9).toLongLong() } });
    }
    return out;
}

QJsonObject PortalStore::account(const QString &client) const
{
    const QJsonArray found = accounts(u" AND c.id = ?"_s, { client });
    return found.isEmpty() ? QJsonObject() : found.first().toObject();
}

WorkspaceReply PortalStore::dashboard() const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT al.id, al.client_id, c.name, al.kind, al.text, al.created_at FROM portals_alerts al"
        " JOIN clients c ON c.id = al.client_id WHERE al.acknowledged_at IS NULL"
        " ORDER BY al.created_at DESC, al.id"_s);
    QJsonArray alerts;
    while (q.next()) {
        alerts.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"client_id"_s, q.value(1).toString() },
            { u"client_name"_s, q.value(2).toString() }, { u"kind"_s, q.value(3).toString() },
            { u"text"_s, q.value(4).toString() }, { u"created_at"_s, isoTime(q.value(5).toLongLong()) } });
    }
    return WorkspaceReply::json(QJsonObject { { u"accounts"_s, accounts({}, {}) }, { u"alerts"_s, alerts } });
}

WorkspaceReply PortalStore::acknowledge(const QString &me, const QString &client, const QString &alert)
{
    if (single(m_store.database(), u"SELECT COUNT(*) FROM portals_alerts WHERE id = ? AND client_id = ?"_s,
            { alert, client })
        == 0)
        return WorkspaceReply::error(404, u"No such alert."_s);
    // Acknowledging twice keeps the first person and time.
    run(m_store.database(),
        u"UPDATE portals_alerts SET acknowledged_by = ?, acknowledged_at = ?"
        " WHERE id = ? AND acknowledged_at IS NULL"_s,
        { me, now(), alert });
    return ok;
}

WorkspaceReply PortalStore::detail(const QString &client) const
{
    const QJsonObject found = account(client);
    if (found.isEmpty())
        return noClient();
    QSqlQuery q = run(m_store.database(),
        u"SELECT id, name, email, invited_at, last_seen_at FROM portals_people WHERE client_id = ?"
        " ORDER BY name, id"_s,
        { client });
    QJsonArray people;
    while (q.next()) {
        people.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
            { u"email"_s, q.value(2).toString() }, { u"invited_at"_s, isoTime(q.value(3).toLongLong()) },
            { u"last_seen_at"_s, optionalTime(q.value(4)) } });
    }
    q = run(m_store.database(),
        u"SELECT id, title, status, updated_at FROM portals_work WHERE client_id = ?"
        " ORDER BY updated_at DESC, id"_s,
        { client });
    QJsonArray work;
    while (q.next()) {
        work.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"title"_s, q.value(1).toString() },
            { u"status"_s, q.value(2).toString() }, { u"updated_at"_s, isoTime(q.value(3).toLongLong()) } });
    }
    return WorkspaceReply::json(QJsonObject { { u"account"_s, found }, { u"people"_s, people },
        { u"reports"_s, reports(u"client_id = ?"_s, { client }) }, { u"work"_s, work } });
}

WorkspaceReply PortalStore::update(const QString &me, const QString &client, const QJsonObject &body)
{
    const QJsonObject current = account(client);
    if (current.isEmpty())
        return noClient();
    if (!body.value("version"_L1).isDouble() || (!body.contains("status"_L1) && !body.contains("welcome"_L1)))
        return WorkspaceReply::error(
            400, u"Send \"status\" or \"welcome\" with the \"version\" the change was based on."_s);
    if (body.value("version"_L1).toInteger() != current.value("version"_L1).toInteger()) {
        const QString editor = BooksSql::text(m_store.database(),
            u"SELECT p.name FROM portals_accounts a JOIN people p ON p.id = a.edited_by WHERE a.client_id = ?"_s,
            { client });
        return WorkspaceReply::json(
            QJsonObject { { u"error"_s,
                              u"%1 changed this portal in the meantime; it now shows their change."_s.arg(
                                  editor.isEmpty() ? u"Someone"_s : editor) },
                { u"account"_s, current } },
            409);
    }
    const QString status = body.value("status"_L1).toString(current.value("status"_L1).toString());
    if (!statuses.contains(status))
        return WorkspaceReply::error(400, u"A portal's status is one of: %1."_s.arg(statuses.join(u", "_s)));
    const QJsonValue welcome = body.value("welcome"_L1);
    if (body.contains("welcome"_L1) && (!welcome.isString() || welcome.toString().size() > welcomeLimit))
        return WorkspaceReply::error(400, u"A welcome is text of at most %1 characters."_s.arg(welcomeLimit));
    ensureAccount(client);
    run(m_store.database(),
        u"UPDATE portals_accounts SET status = ?, welcome = ?, version = version + 1, edited_by = ?"
        " WHERE client_id = ?"_s,
        { status, welcome.toString(current.value("welcome"_L1).toString()), me, client });
    return WorkspaceReply::json(account(client));
}

WorkspaceReply PortalStore::profile(const QString &client) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT id, name, board_id, phone, email, created_at FROM clients WHERE id = ? AND board_id = 'customers'"_s,
        { client });
    if (!q.next())
        return noClient();
    return WorkspaceReply::json(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
        { u"board_id"_s, q.value(2).toString() }, { u"phone"_s, optionalText(q.value(3)) },
        { u"email"_s, optionalText(q.value(4)) }, { u"created_at"_s, isoTime(q.value(5).toLongLong()) } });
}

QJsonArray PortalStore::months(const QString &client) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT month, visits, leads, calls, revenue FROM portals_performance WHERE client_id = ? ORDER BY month"_s,
        { client });
    QJsonArray out;
    while (q.next()) {
        out.append(QJsonObject { { u"month"_s, q.value(0).toString() }, { u"visits"_s, q.value(1).toLongLong() },
            { u"leads"_s, q.value(2).toLongLong() }, { u"calls"_s, q.value(3).toLongLong() },
            { u"revenue"_s, q.value(4).toLongLong() } });
    }
    return out;
}

WorkspaceReply PortalStore::performance(const QString &client) const
{
    if (!isClient(client))
        return noClient();
    return WorkspaceReply::json(months(client));
}

// The month so far from the workspace's own records: calls from the call
// book and leads from the portal's intake; visits come from the portal and
// keep what it last reported.
WorkspaceReply PortalStore::syncPerformance(const QString &client)
{
    if (!isClient(client))
        return noClient();
    ensureAccount(client);
    const QDateTime monthStart(QDate::fromString(currentMonth() + u"-01"_s, u"yyyy-MM-dd"_s), QTime(0, 0), Qt::UTC);
    const qint64 since = monthStart.toMSecsSinceEpoch();
    const qint64 calls = single(m_store.database(),
        u"SELECT COUNT(*) FROM calls_book WHERE client_id = ? AND started_at >= ?"_s, { client, since });
    const qint64 leads = single(m_store.database(),
        u"SELECT COUNT(*) FROM portals_alerts WHERE client_id = ? AND kind = 'lead' AND created_at >= ?"_s,
        { client, since });
    run(m_store.database(),
        u"INSERT INTO portals_performance (client_id, month, visits, leads, calls, revenue) VALUES (?, ?, 0, ?, ?, 0)"
        " ON CONFLICT (client_id, month) DO UPDATE SET leads = excluded.leads, calls = excluded.calls"_s,
        { client, currentMonth(), leads, calls });
    // Figures that were out of date are not any more.
    run(m_store.database(),
        u"UPDATE portals_alerts SET acknowledged_at = ? WHERE client_id = ? AND kind = 'performance'"
        " AND acknowledged_at IS NULL"_s,
        { now(), client });
    return WorkspaceReply::json(months(client));
}

WorkspaceReply PortalStore::refresh(const QString &client)
{
    if (!isClient(client))
        return noClient();
    ensureAccount(client);
    run(m_store.database(), u"UPDATE portals_accounts SET refreshed_at = ? WHERE client_id = ?"_s, { now(), client });
    return WorkspaceReply::json(account(client));
}

WorkspaceReply PortalStore::invite(const QString &client, const QJsonObject &body)
{
    if (!isClient(client))
        return noClient();
    const QString name = body.value("name"_L1).toString().trimmed();
    const QString email = body.value("email"_L1).toString().trimmed().toLower();
    static const QRegularExpression address(u"^[^@\\s]+@[^@\\s]+\\.[^@\\s]+$"_s);
    if (name.isEmpty() || name.size() > titleLimit)
        return WorkspaceReply::error(400, u"A person needs a name."_s);
    if (!address.match(email).hasMatch())
        return WorkspaceReply::error(400, u"That is not an email address."_s);
    if (single(m_store.database(), u"SELECT COUNT(*) FROM portals_people WHERE client_id = ? AND email = ?"_s,
            { client, email })
        > 0)
        return WorkspaceReply::error(409, u"%1 is already invited to this portal."_s.arg(email));
    ensureAccount(client);
    const QString id = newID("pp-"_L1);
    run(m_store.database(),
        u"INSERT INTO portals_people (id, client_id, name, email, invited_at) VALUES (?, ?, ?, ?, ?)"_s,
        { id, client, name, email, now() });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } }, 201);
}

WorkspaceReply PortalStore::removePerson(const QString &client, const QString &person)
{
    if (single(m_store.database(), u"SELECT COUNT(*) FROM portals_people WHERE id = ? AND client_id = ?"_s,
            { person, client })
        == 0)
        return WorkspaceReply::error(404, u"No such person on this portal."_s);
    run(m_store.database(), u"DELETE FROM portals_people WHERE id = ?"_s, { person });
    return ok;
}

WorkspaceReply PortalStore::personLink(const QString &client, const QString &person)
{
    if (single(m_store.database(), u"SELECT COUNT(*) FROM portals_people WHERE id = ? AND client_id = ?"_s,
            { person, client })
        == 0)
        return WorkspaceReply::error(404, u"No such person on this portal."_s);
    // A new link replaces the one before it.
    const QString code = WorkspaceTokens::random();
    const qint64 expires = now() + linkLifetimeMs;
    run(m_store.database(), u"UPDATE portals_people SET link_hash = ?, link_expires_at = ? WHERE id = ?"_s,
        { WorkspaceTokens::hash(code), expires, person });
    const QString url = QString(portalOrigin) + u"/sign-in?code="_s + code;
    return WorkspaceReply::json(QJsonObject { { u"url"_s, url }, { u"expires_at"_s, isoTime(expires) } });
}

WorkspaceReply PortalStore::issueKey(const QString &client, Key kind)
{
    if (!isClient(client))
        return noClient();
    ensureAccount(client);
    const QString prefix = kind == Key::Lead ? u"ptk_lead_"_s : u"ptk_pilo_"_s;
    const QString key = prefix + WorkspaceTokens::random(24);
    const QString tail = key.right(tailLength);
    // The column names are the code's own, never the caller's text.
    const QString column = kind == Key::Lead ? u"lead_key"_s : u"pilo_key"_s;
    run(m_store.database(), u"UPDATE portals_accounts SET %1_hash = ?, %1_tail = ? WHERE client_id = ?"_s.arg(column),
        { WorkspaceTokens::hash(key), tail, client });
    return WorkspaceReply::json(QJsonObject { { u"key"_s, key }, { u"tail"_s, tail } }, 201);
}

WorkspaceReply PortalStore::revokePiloKey(const QString &client)
{
    if (!isClient(client))
        return noClient();
    run(m_store.database(),
        u"UPDATE portals_accounts SET pilo_key_hash = NULL, pilo_key_tail = NULL WHERE client_id = ?"_s, { client });
    return ok;
}

QString PortalStore::clientOfKey(const QString &key, Key kind) const
{
    if (key.isEmpty())
        return {};
    const QString column = kind == Key::Lead ? u"lead_key_hash"_s : u"pilo_key_hash"_s;
    return BooksSql::text(m_store.database(),
        u"SELECT client_id FROM portals_accounts WHERE %1 = ? AND status != 'paused'"_s.arg(column),
        { WorkspaceTokens::hash(key) });
}

QJsonArray PortalStore::reports(const QString &where, const QVariantList &values) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT id, client_id, title, month, body, published, created_at FROM portals_reports WHERE "_s + where
            + u" ORDER BY month DESC, created_at DESC, id"_s,
        values);
    QJsonArray out;
    while (q.next()) {
        out.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"client_id"_s, q.value(1).toString() },
            { u"title"_s, q.value(2).toString() }, { u"month"_s, q.value(3).toString() },
            { u"body"_s, q.value(4).toString() }, { u"published"_s, q.value(5).toBool() },
            { u"created_at"_s, isoTime(q.value(6).toLongLong()) } });
    }
    return out;
}

WorkspaceReply PortalStore::createReport(const QString &client, const QJsonObject &body)
{
    if (!isClient(client))
        return noClient();
    const QString title = body.value("title"_L1).toString().trimmed();
    const QString month = body.value("month"_L1).toString();
    if (title.isEmpty() || title.size() > titleLimit)
        return WorkspaceReply::error(400, u"A report needs a title of at most %1 characters."_s.arg(titleLimit));
    if (!isMonth(month) || month > currentMonth())
        return WorkspaceReply::error(400, u"A report is for a month up to this one, written \"YYYY-MM\"."_s);
    QSqlQuery q = run(m_store.database(),
        u"SELECT visits, leads, calls, revenue FROM portals_performance WHERE client_id = ? AND month = ?"_s,
        { client, month });
    const QString monthName = QLocale::c().toString(QDate::fromString(month, u"yyyy-MM"_s), u"MMMM yyyy"_s);
    const QString text = q.next()
        ? u"In %1 your portal had %2 visits, %3 leads and %4 calls; revenue was %5."_s.arg(monthName)
              .arg(q.value(0).toLongLong())
              .arg(q.value(1).toLongLong())
              .arg(q.value(2).toLongLong())
              .arg(QLocale::c().toCurrencyString(q.value(3).toLongLong() / 100.0, u"$"_s))
        : u"No figures were synced for %1 yet."_s.arg(monthName);
    ensureAccount(client);
    const QString id = newID("pr-"_L1);
    run(m_store.database(),
        u"INSERT INTO portals_reports (id, client_id, title, month, body, created_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, client, title, month, text, now() });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } }, 201);
}

WorkspaceReply PortalStore::report(const QString &client, const QString &id) const
{
    const QJsonArray found = reports(u"client_id = ? AND id = ?"_s, { client, id });
    if (found.isEmpty())
        return WorkspaceReply::error(404, u"No such report."_s);
    return WorkspaceReply::json(found.first().toObject());
}

WorkspaceReply PortalStore::setPublished(const QString &client, const QString &id, const QJsonObject &body)
{
    if (!body.value("published"_L1).isBool())
        return WorkspaceReply::error(400, u"Send \"published\": true or false."_s);
    run(m_store.database(), u"UPDATE portals_reports SET published = ? WHERE client_id = ? AND id = ?"_s,
        { body.value("published"_L1).toBool(), client, id });
    return report(client, id);
}

WorkspaceReply PortalStore::deleteReport(const QString &client, const QString &id)
{
    if (run(m_store.database(), u"DELETE FROM portals_reports WHERE client_id = ? AND id = ?"_s, { client, id })
            .numRowsAffected()
        == 0)
        return WorkspaceReply::error(404, u"No such report."_s);
    return ok;
}

WorkspaceReply PortalStore::deleteWork(const QString &client, const QString &id)
{
    if (run(m_store.database(), u"DELETE FROM portals_work WHERE client_id = ? AND id = ?"_s, { client, id })
            .numRowsAffected()
        == 0)
        return WorkspaceReply::error(404, u"No such work."_s);
    return ok;
}

WorkspaceReply PortalStore::intakeLead(const QString &key, const QJsonObject &body)
{
    const QString client = clientOfKey(key, Key::Lead);
    if (client.isEmpty())
        return refusedKey;
    const QString name = body.value("name"_L1).toString().trimmed().left(titleLimit);
    if (name.isEmpty())
        return WorkspaceReply::error(400, u"A lead needs a name."_s);
    plantAlert(client, u"lead"_s, u"New lead from the portal: %1"_s.arg(name), now());
    return WorkspaceReply::json(QJsonObject { { u"ok"_s, true } }, 201);
}

WorkspaceReply PortalStore::publishedReports(const QString &key) const
{
    const QString client = clientOfKey(key, Key::Pilo);
    if (client.isEmpty())
        return refusedKey;
    return WorkspaceReply::json(reports(u"client_id = ? AND published = 1"_s, { client }));
}

void PortalStore::plantAccount(const QString &client, const QString &status, const QString &welcome)
{
    // An empty welcome is bound as text: a null one would break NOT NULL, which
    // OR IGNORE passes over without a word.
    run(m_store.database(), u"INSERT OR IGNORE INTO portals_accounts (client_id, status, welcome) VALUES (?, ?, ?)"_s,
        { client, status, welcome.isNull() ? QStringLiteral("") : welcome });
}

void PortalStore::plantPerson(
    const QString &client, const QString &name, const QString &email, qint64 invitedAtMs, qint64 lastSeenAtMs)
{
    run(m_store.database(),
        u"INSERT INTO portals_people (id, client_id, name, email, invited_at, last_seen_at) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { newID("pp-"_L1), client, name, email, invitedAtMs,
            lastSeenAtMs > 0 ? QVariant(lastSeenAtMs) : QVariant(QMetaType::fromType<qint64>()) });
}

void PortalStore::plantAlert(const QString &client, const QString &kind, const QString &text, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT INTO portals_alerts (id, client_id, kind, text, created_at) VALUES (?, ?, ?, ?, ?)"_s,
        { newID("pa-"_L1), client, kind, text, atMs });
}

void PortalStore::plantReport(const QString &client, const QString &title, const QString &month, bool published)
{
    std::ignore = createReport(client, QJsonObject { { u"title"_s, title }, { u"month"_s, month } });
    run(m_store.database(), u"UPDATE portals_reports SET published = ? WHERE client_id = ? AND month = ?"_s,
        { published, client, month });
}

void PortalStore::plantWork(const QString &client, const QString &title, const QString &status, qint64 atMs)
{
    run(m_store.database(),
        u"INSERT INTO portals_work (id, client_id, title, status, updated_at) VALUES (?, ?, ?, ?, ?)"_s,
        { newID("pw-"_L1), client, title, status, atMs });
}

void PortalStore::plantMonth(
    const QString &client, const QString &month, qint64 visits, qint64 leads, qint64 calls, qint64 revenue)
{
    run(m_store.database(),
        u"INSERT OR REPLACE INTO portals_performance (client_id, month, visits, leads, calls, revenue)"
        " VALUES (?, ?, ?, ?, ?, ?)"_s,
        { client, month, visits, leads, calls, revenue });
}
