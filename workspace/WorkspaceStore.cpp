#include "workspace/WorkspaceStore.h"

#include "workspace/WorkspaceTokens.h"

#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

// A consent page left open longer than this has to be started again.
constexpr qint64 googleStateLifetimeMs = 15 * 60 * 1000;

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

QString appsToText(const QStringList &apps)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(apps)).toJson(QJsonDocument::Compact));
}

QStringList appsFromText(const QString &text)
{
    QStringList apps;
    const QJsonArray array = QJsonDocument::fromJson(text.toUtf8()).array();
    for (const QJsonValue &v : array)
        apps.append(v.toString());
    return apps;
}

std::optional<QString> optionalText(const QVariant &v)
{
    if (v.isNull())
        return std::nullopt;
    return v.toString();
}

QVariant nullable(const std::optional<QString> &text)
{
    return text ? QVariant(*text) : QVariant(QMetaType::fromType<QString>());
}

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS meta (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS people ("
    " id TEXT PRIMARY KEY, position INTEGER NOT NULL, name TEXT NOT NULL, email TEXT NOT NULL UNIQUE,"
    " role TEXT NOT NULL, owner INTEGER NOT NULL, books_owner INTEGER NOT NULL, apps TEXT NOT NULL,"
    " background TEXT, accent TEXT, text_size TEXT)",
    "CREATE TABLE IF NOT EXISTS sessions ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT, token_hash TEXT NOT NULL UNIQUE,"
    " person_id TEXT NOT NULL REFERENCES people(id), csrf TEXT NOT NULL,"
    " created_at INTEGER NOT NULL, ended_at INTEGER)",
    "CREATE TABLE IF NOT EXISTS sign_in_codes ("
    " code_hash TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id),"
    " challenge TEXT NOT NULL, expires_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS google_states ("
    " state_hash TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id),"
    " service TEXT NOT NULL, created_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS google_connections ("
    " person_id TEXT NOT NULL REFERENCES people(id), service TEXT NOT NULL,"
    " connected_at INTEGER NOT NULL, PRIMARY KEY (person_id, service))",
    // The assistant's requests; WorkspaceAgent reads and writes them.
    "CREATE TABLE IF NOT EXISTS agent_requests ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), request_key TEXT,"
    " content TEXT NOT NULL, status TEXT NOT NULL, reply TEXT, created_at INTEGER NOT NULL,"
    " origin TEXT, page TEXT, title TEXT, run TEXT NOT NULL, changed_at INTEGER NOT NULL,"
    " decision TEXT, reconciliation TEXT, decided_by TEXT, UNIQUE (person_id, request_key))",
    // The books: a double-entry ledger in integer cents. An entry's lines
    // balance (the ledger refuses one that does not before it is stored).
    "CREATE TABLE IF NOT EXISTS books_settings (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS books_accounts ("
    " id TEXT PRIMARY KEY, code TEXT NOT NULL UNIQUE, name TEXT NOT NULL,"
    " type TEXT NOT NULL CHECK (type IN ('Asset', 'Liability', 'Equity', 'Income', 'Expense')),"
    " bank INTEGER NOT NULL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS books_entries ("
    " seq INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL UNIQUE, entry_date TEXT NOT NULL,"
    " memo TEXT NOT NULL, source_type TEXT, source_id TEXT, reverses_id TEXT)",
    "CREATE TABLE IF NOT EXISTS books_lines ("
    " entry_id TEXT NOT NULL REFERENCES books_entries(id), account_id TEXT NOT NULL REFERENCES books_accounts(id),"
    " debit INTEGER NOT NULL CHECK (debit >= 0), credit INTEGER NOT NULL CHECK (credit >= 0))",
    "CREATE INDEX IF NOT EXISTS books_lines_entry ON books_lines (entry_id)",
    "CREATE INDEX IF NOT EXISTS books_lines_account ON books_lines (account_id)",
    "CREATE TABLE IF NOT EXISTS books_documents ("
    " id TEXT PRIMARY KEY, kind TEXT NOT NULL, party TEXT NOT NULL, number TEXT, document_date TEXT NOT NULL,"
    " due_date TEXT NOT NULL, amount INTEGER NOT NULL CHECK (amount > 0), applies_to TEXT,"
    " entry_id TEXT NOT NULL REFERENCES books_entries(id), voided INTEGER NOT NULL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS books_bank_rows ("
    " seq INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL UNIQUE,"
    " bank_account_id TEXT NOT NULL REFERENCES books_accounts(id), row_date TEXT NOT NULL,"
    " description TEXT NOT NULL, amount INTEGER NOT NULL, reference TEXT NOT NULL, source TEXT NOT NULL,"
    " fingerprint TEXT NOT NULL, occurrence INTEGER NOT NULL, entry_id TEXT, locked INTEGER NOT NULL DEFAULT 0,"
    " UNIQUE (bank_account_id, fingerprint, occurrence))",
    "CREATE TABLE IF NOT EXISTS books_reconciliations ("
    " id TEXT PRIMARY KEY, bank_account_id TEXT NOT NULL, statement_date TEXT NOT NULL,"
    " statement_balance INTEGER NOT NULL, preview TEXT NOT NULL)",
    // The payments terminal: amounts in integer cents, days as "YYYY-MM-DD".
    "CREATE TABLE IF NOT EXISTS payment_invoices ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL, client TEXT NOT NULL, invoice_number TEXT,"
    " due_on TEXT NOT NULL, amount INTEGER NOT NULL CHECK (amount > 0))",
    "CREATE TABLE IF NOT EXISTS payment_cards ("
    " payment_profile_id TEXT PRIMARY KEY, client_id TEXT NOT NULL, card_type TEXT NOT NULL,"
    " last4 TEXT NOT NULL, expiration TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS payments ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL, client TEXT NOT NULL, invoice_id TEXT,"
    " amount INTEGER NOT NULL CHECK (amount > 0), status TEXT NOT NULL, date TEXT NOT NULL,"
    " method TEXT NOT NULL, reference TEXT)",
    "CREATE TABLE IF NOT EXISTS payment_charges ("
    " request_key TEXT PRIMARY KEY, payment_id TEXT NOT NULL REFERENCES payments(id))",
    "CREATE TABLE IF NOT EXISTS payment_refund_requests ("
    " id TEXT PRIMARY KEY, payment_id TEXT NOT NULL REFERENCES payments(id),"
    " amount INTEGER NOT NULL CHECK (amount > 0), status TEXT NOT NULL, reason TEXT NOT NULL, note TEXT)",
    // Customers, shared by every part that names one; `board_id` is the board
    // a customer started on. Times are milliseconds since the epoch.
    "CREATE TABLE IF NOT EXISTS clients ("
    " id TEXT PRIMARY KEY, name TEXT NOT NULL, board_id TEXT NOT NULL, phone TEXT, email TEXT,"
    " created_at INTEGER NOT NULL)",
    // The shared inbox: one thread per channel and customer address.
    "CREATE TABLE IF NOT EXISTS inbox_threads ("
    " id TEXT PRIMARY KEY, kind TEXT NOT NULL, client_id TEXT REFERENCES clients(id),"
    " customer_address TEXT NOT NULL, business_address TEXT NOT NULL, owner_id TEXT REFERENCES people(id),"
    " snoozed_until INTEGER, done INTEGER NOT NULL DEFAULT 0, updated_at INTEGER NOT NULL,"
    " UNIQUE (kind, customer_address))",
    // An outbound entry's delivery state follows from its age; "draft" is kept.
    "CREATE TABLE IF NOT EXISTS inbox_entries ("
    " seq INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL UNIQUE,"
    " thread_id TEXT NOT NULL REFERENCES inbox_threads(id), direction TEXT NOT NULL, body TEXT NOT NULL,"
    " author_id TEXT REFERENCES people(id), draft INTEGER NOT NULL DEFAULT 0, nonce TEXT,"
    " mentions TEXT, created_at INTEGER NOT NULL, UNIQUE (thread_id, nonce))",
    "CREATE TABLE IF NOT EXISTS inbox_attachments ("
    " id TEXT PRIMARY KEY, entry_id TEXT NOT NULL REFERENCES inbox_entries(id), name TEXT NOT NULL,"
    " status TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS inbox_notifications ("
    " entry_id TEXT NOT NULL REFERENCES inbox_entries(id), person_id TEXT NOT NULL REFERENCES people(id),"
    " reason TEXT NOT NULL, dismissed INTEGER NOT NULL DEFAULT 0, PRIMARY KEY (entry_id, person_id))",
    // The call book: `started_at` and `ring_ms` in milliseconds, `duration`
    // in seconds of talk; `edited_by` is who changed a cell last.
    "CREATE TABLE IF NOT EXISTS calls_book ("
    " id TEXT PRIMARY KEY, direction TEXT NOT NULL, client_id TEXT REFERENCES clients(id),"
    " person_id TEXT NOT NULL REFERENCES people(id), number TEXT NOT NULL, started_at INTEGER NOT NULL,"
    " ring_ms INTEGER NOT NULL DEFAULT 0, duration INTEGER NOT NULL, outcome TEXT NOT NULL,"
    " notes TEXT NOT NULL DEFAULT '', mode TEXT, recorded INTEGER NOT NULL DEFAULT 0,"
    " version INTEGER NOT NULL DEFAULT 1, edited_by TEXT REFERENCES people(id))",
    // The books' bank feed: each account connected (`bank_index` its place at
    // the simulated bank, `delivered` how many of its rows are in
    // books_bank_rows), the balance the bank showed on a day, and each
    // reconciliation of that balance against the books, with who made it.
    "CREATE TABLE IF NOT EXISTS bankfeed_accounts ("
    " id TEXT PRIMARY KEY, bank_index INTEGER NOT NULL UNIQUE,"
    " bank_account_id TEXT NOT NULL UNIQUE REFERENCES books_accounts(id), name TEXT NOT NULL, mask TEXT NOT NULL,"
    " connected_at INTEGER NOT NULL, connected_by TEXT NOT NULL REFERENCES people(id), history INTEGER NOT NULL,"
    " delivered INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS bankfeed_baselines ("
    " account_id TEXT PRIMARY KEY REFERENCES bankfeed_accounts(id), day TEXT NOT NULL, balance INTEGER NOT NULL,"
    " set_by TEXT NOT NULL REFERENCES people(id), set_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS bankfeed_reconciliations ("
    " id TEXT PRIMARY KEY, account_id TEXT NOT NULL REFERENCES bankfeed_accounts(id), day TEXT NOT NULL,"
    " external_balance INTEGER NOT NULL, books_balance INTEGER NOT NULL, difference INTEGER NOT NULL,"
    " created_by TEXT NOT NULL REFERENCES people(id), created_at INTEGER NOT NULL)",
    // The company's handbook and thought board. `company_post_reads` holds
    // who has read which post; a decision is the owner's, with the post's
    // `version` guarding it against another owner's at the same time.
    "CREATE TABLE IF NOT EXISTS company_sops ("
    " id TEXT PRIMARY KEY, title TEXT NOT NULL, category TEXT NOT NULL, body TEXT NOT NULL,"
    " author_id TEXT NOT NULL REFERENCES people(id), updated_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS company_posts ("
    " id TEXT PRIMARY KEY, title TEXT NOT NULL, body TEXT NOT NULL, author_id TEXT NOT NULL REFERENCES people(id),"
    " created_at INTEGER NOT NULL, decision TEXT, decided_by TEXT REFERENCES people(id),"
    " version INTEGER NOT NULL DEFAULT 1)",
    "CREATE TABLE IF NOT EXISTS company_post_reads ("
    " post_id TEXT NOT NULL REFERENCES company_posts(id), person_id TEXT NOT NULL REFERENCES people(id),"
    " PRIMARY KEY (post_id, person_id))",
    // The work plan: each person's planned work by day ("YYYY-MM-DD"), a
    // reminder's `time` "HH:mm"; done while `done_at` is set. Admin tasks
    // are edited against their `version`. Coaching notes belong to a
    // person's week, named by its Monday.
    "CREATE TABLE IF NOT EXISTS workplan_entries ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), kind TEXT NOT NULL, title TEXT NOT NULL,"
    " day TEXT NOT NULL, time TEXT, client_id TEXT REFERENCES clients(id), notes TEXT NOT NULL DEFAULT '',"
    " done_at INTEGER, done_by TEXT REFERENCES people(id), created_by TEXT NOT NULL REFERENCES people(id),"
    " created_at INTEGER NOT NULL, edited_by TEXT REFERENCES people(id), version INTEGER NOT NULL DEFAULT 1)",
    "CREATE INDEX IF NOT EXISTS workplan_entries_day ON workplan_entries (person_id, day)",
    "CREATE TABLE IF NOT EXISTS workplan_coach_notes ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), week TEXT NOT NULL,"
    " author_id TEXT NOT NULL REFERENCES people(id), body TEXT NOT NULL, created_at INTEGER NOT NULL)",
    // A sales lead's details beside its `clients` row on the "leads" board;
    // `estimate` in cents.
    "CREATE TABLE IF NOT EXISTS calls_leads ("
    " client_id TEXT PRIMARY KEY REFERENCES clients(id), status TEXT NOT NULL, source TEXT NOT NULL,"
    " interest TEXT NOT NULL, owner_id TEXT REFERENCES people(id), estimate INTEGER NOT NULL DEFAULT 0)",
    // The documents screen: `kind` "worksheet", "agreement" or "proposal";
    // times in milliseconds. An envelope is a draft while `sent_at` is null;
    // its signers sign in `position` order (their links and answers are
    // SigningLinks' tables; `sign_ms` is left from a clock that signed, 0).
    "CREATE TABLE IF NOT EXISTS documents_items ("
    " id TEXT PRIMARY KEY, kind TEXT NOT NULL, title TEXT NOT NULL, client_id TEXT REFERENCES clients(id),"
    " owner_id TEXT NOT NULL REFERENCES people(id), status TEXT NOT NULL, updated_at INTEGER NOT NULL,"
    " pages INTEGER NOT NULL DEFAULT 1)",
    "CREATE TABLE IF NOT EXISTS documents_envelopes ("
    " id TEXT PRIMARY KEY, document_id TEXT NOT NULL REFERENCES documents_items(id), message TEXT NOT NULL,"
    " created_by TEXT NOT NULL REFERENCES people(id), created_at INTEGER NOT NULL, sent_at INTEGER,"
    " sign_ms INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS documents_signers ("
    " envelope_id TEXT NOT NULL REFERENCES documents_envelopes(id), position INTEGER NOT NULL,"
    " name TEXT NOT NULL, email TEXT NOT NULL, PRIMARY KEY (envelope_id, position))",
    // HR details beside a person: `employment` is "employee", "part-time",
    // "contractor" or "owner", `started_on` a day; `version` grows with each
    // owner's change, kept with who made it and when.
    "CREATE TABLE IF NOT EXISTS people_hr ("
    " person_id TEXT PRIMARY KEY REFERENCES people(id), job_title TEXT NOT NULL, employment TEXT NOT NULL,"
    " started_on TEXT NOT NULL, phone TEXT, emergency_contact TEXT, version INTEGER NOT NULL DEFAULT 1,"
    " updated_by TEXT REFERENCES people(id), updated_at INTEGER)",
    // The time clock: times in milliseconds, `clock_out` NULL while clocked
    // in; the last correction on the entry, and every one in
    // `people_time_edits` with the times it replaced.
    "CREATE TABLE IF NOT EXISTS people_time_entries ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), clock_in INTEGER NOT NULL,"
    " clock_out INTEGER, edited_by TEXT REFERENCES people(id), edited_at INTEGER, edit_reason TEXT,"
    " version INTEGER NOT NULL DEFAULT 1)",
    "CREATE TABLE IF NOT EXISTS people_time_edits ("
    " entry_id TEXT NOT NULL REFERENCES people_time_entries(id), editor_id TEXT NOT NULL REFERENCES people(id),"
    " edited_at INTEGER NOT NULL, reason TEXT NOT NULL, old_clock_in INTEGER NOT NULL, old_clock_out INTEGER,"
    " clock_in INTEGER NOT NULL, clock_out INTEGER)",
    // Payroll: hourly `rate` in cents; a period's row (by its first day)
    // once its status or notes changed; adjustments in cents; every action
    // with who took it and when.
    "CREATE TABLE IF NOT EXISTS people_payroll_rates ("
    " person_id TEXT PRIMARY KEY REFERENCES people(id), rate INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS people_payroll_periods ("
    " start TEXT PRIMARY KEY, status TEXT NOT NULL, notes TEXT NOT NULL DEFAULT '',"
    " version INTEGER NOT NULL DEFAULT 0, updated_by TEXT REFERENCES people(id))",
    "CREATE TABLE IF NOT EXISTS people_payroll_adjustments ("
    " id TEXT PRIMARY KEY, period_start TEXT NOT NULL, person_id TEXT NOT NULL REFERENCES people(id),"
    " label TEXT NOT NULL, amount INTEGER NOT NULL, created_by TEXT NOT NULL REFERENCES people(id),"
    " created_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS people_payroll_log ("
    " period_start TEXT NOT NULL, action TEXT NOT NULL, person_id TEXT NOT NULL REFERENCES people(id),"
    " at INTEGER NOT NULL)",
    // The support board. A subtask is a task with a parent; a task made by a
    // recurring rule carries the rule and the day it stands for, once.
    "CREATE TABLE IF NOT EXISTS support_recurring ("
    " id TEXT PRIMARY KEY, title TEXT NOT NULL, client_id TEXT REFERENCES clients(id),"
    " assignee_id TEXT REFERENCES people(id), priority TEXT NOT NULL, every TEXT NOT NULL,"
    " active INTEGER NOT NULL DEFAULT 1, created_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS support_tasks ("
    " id TEXT PRIMARY KEY, parent_id TEXT REFERENCES support_tasks(id), title TEXT NOT NULL,"
    " description TEXT NOT NULL DEFAULT '', status TEXT NOT NULL, priority TEXT NOT NULL,"
    " client_id TEXT REFERENCES clients(id), assignee_id TEXT REFERENCES people(id), due_date TEXT,"
    " recurring_id TEXT REFERENCES support_recurring(id), occurrence TEXT, version INTEGER NOT NULL DEFAULT 1,"
    " created_at INTEGER NOT NULL, updated_at INTEGER NOT NULL, UNIQUE (recurring_id, occurrence))",
    "CREATE TABLE IF NOT EXISTS support_comments ("
    " id TEXT PRIMARY KEY, task_id TEXT NOT NULL REFERENCES support_tasks(id),"
    " author_id TEXT NOT NULL REFERENCES people(id), body TEXT NOT NULL, created_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS support_files ("
    " id TEXT PRIMARY KEY, task_id TEXT NOT NULL REFERENCES support_tasks(id), name TEXT NOT NULL,"
    " data BLOB NOT NULL, uploaded_by TEXT NOT NULL REFERENCES people(id), created_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS support_time ("
    " id TEXT PRIMARY KEY, task_id TEXT NOT NULL REFERENCES support_tasks(id),"
    " person_id TEXT NOT NULL REFERENCES people(id), minutes INTEGER NOT NULL CHECK (minutes > 0),"
    " day TEXT NOT NULL, note TEXT NOT NULL DEFAULT '', created_at INTEGER NOT NULL)",
    // One running timer per person, kept here so that it outlives the app.
    "CREATE TABLE IF NOT EXISTS support_timers ("
    " person_id TEXT PRIMARY KEY REFERENCES people(id), task_id TEXT NOT NULL REFERENCES support_tasks(id),"
    " started_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS support_client_notes ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id),"
    " author_id TEXT NOT NULL REFERENCES people(id), body TEXT NOT NULL, created_at INTEGER NOT NULL)",
    // A person's saved views: a name and the filters as a JSON object.
    "CREATE TABLE IF NOT EXISTS support_views ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), name TEXT NOT NULL,"
    " filters TEXT NOT NULL, created_at INTEGER NOT NULL)",
    // Client portals, one per customer. Keys are kept only as their SHA-256
    // and last characters; a person's sign-in link likewise. Months are
    // "YYYY-MM", times milliseconds since the epoch, money in cents.
    "CREATE TABLE IF NOT EXISTS portals_accounts ("
    " client_id TEXT PRIMARY KEY REFERENCES clients(id), status TEXT NOT NULL, welcome TEXT NOT NULL DEFAULT '',"
    " lead_key_hash TEXT UNIQUE, lead_key_tail TEXT, pilo_key_hash TEXT UNIQUE, pilo_key_tail TEXT,"
    " refreshed_at INTEGER, version INTEGER NOT NULL DEFAULT 1, edited_by TEXT REFERENCES people(id))",
    "CREATE TABLE IF NOT EXISTS portals_people ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES portals_accounts(client_id), name TEXT NOT NULL,"
    " email TEXT NOT NULL, invited_at INTEGER NOT NULL, last_seen_at INTEGER, link_hash TEXT,"
    " link_expires_at INTEGER, UNIQUE (client_id, email))",
    "CREATE TABLE IF NOT EXISTS portals_alerts ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES portals_accounts(client_id), kind TEXT NOT NULL,"
    " text TEXT NOT NULL, created_at INTEGER NOT NULL, acknowledged_by TEXT REFERENCES people(id),"
    " acknowledged_at INTEGER)",
    "CREATE TABLE IF NOT EXISTS portals_reports ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES portals_accounts(client_id), title TEXT NOT NULL,"
    " month TEXT NOT NULL, body TEXT NOT NULL, published INTEGER NOT NULL DEFAULT 0, created_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS portals_work ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES portals_accounts(client_id), title TEXT NOT NULL,"
    " status TEXT NOT NULL, updated_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS portals_performance ("
    " client_id TEXT NOT NULL REFERENCES portals_accounts(client_id), month TEXT NOT NULL,"
    " visits INTEGER NOT NULL, leads INTEGER NOT NULL, calls INTEGER NOT NULL, revenue INTEGER NOT NULL,"
    " PRIMARY KEY (client_id, month))",
};

WorkspacePerson personFrom(const QSqlQuery &q)
{
    return {
        .id = q.value(0).toString(),
        .name = q.value(1).toString(),
        .email = q.value(2).toString(),
        .role = q.value(3).toString(),
        .owner = q.value(4).toBool(),
        .books_owner = q.value(5).toBool(),
        .apps = appsFromText(q.value(6).toString()),
        .background = optionalText(q.value(7)),
        .accent = optionalText(q.value(8)),
        .text_size = optionalText(q.value(9)),
    };
}

constexpr auto personColumns = "id, name, email, role, owner, books_owner, apps, background, accent, text_size"_L1;

} // namespace

WorkspaceStore::WorkspaceStore()
    : m_connection(u"workspace-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

WorkspaceStore::~WorkspaceStore()
{
    if (QSqlDatabase::contains(m_connection)) {
        QSqlDatabase::database(m_connection, false).close();
        QSqlDatabase::removeDatabase(m_connection);
    }
}

bool WorkspaceStore::open(const QString &dataDir, QString *error)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection);
    db.setDatabaseName(QDir(dataDir).filePath(u"workspace.sqlite"_s));
    if (!db.open()) {
        if (error)
            *error = db.lastError().text();
        return false;
    }
    if (!createSchema()) {
        if (error)
            *error = u"could not create the schema: "_s + db.lastError().text();
        return false;
    }
    return true;
}

bool WorkspaceStore::createSchema()
{
    QSqlQuery pragma(QSqlDatabase::database(m_connection));
    pragma.exec(u"PRAGMA foreign_keys = ON"_s);
    pragma.exec(u"PRAGMA journal_mode = WAL"_s);
    for (const char *statement : schema) {
        QSqlQuery q = prepare(QString::fromLatin1(statement));
        if (!exec(q))
            return false;
    }
    // Sessions from before CSRF tokens were stored hashed (64 hex digits) end.
    QSqlQuery plain = prepare(u"UPDATE sessions SET ended_at = ? WHERE ended_at IS NULL AND length(csrf) != 64"_s);
    plain.addBindValue(now());
    return exec(plain);
}

QSqlDatabase WorkspaceStore::database() const
{
    return QSqlDatabase::database(m_connection);
}

QSqlQuery WorkspaceStore::prepare(const QString &sql) const
{
    QSqlQuery q(QSqlDatabase::database(m_connection));
    if (!q.prepare(sql))
        qWarning("workspace: could not prepare a statement: %s", qPrintable(q.lastError().text()));
    return q;
}

bool WorkspaceStore::exec(QSqlQuery &query) const
{
    if (query.exec())
        return true;
    // Bound values may hold secrets' hashes; log only the statement and error.
    qWarning("workspace: %s: %s", qPrintable(query.lastQuery()), qPrintable(query.lastError().text()));
    return false;
}

bool WorkspaceStore::isSeeded() const
{
    QSqlQuery q = prepare(u"SELECT value FROM meta WHERE key = 'seeded'"_s);
    return exec(q) && q.next();
}

bool WorkspaceStore::beginSeed()
{
    return QSqlDatabase::database(m_connection).transaction();
}

bool WorkspaceStore::finishSeed()
{
    QSqlQuery q = prepare(u"INSERT OR REPLACE INTO meta (key, value) VALUES ('seeded', ?)"_s);
    q.addBindValue(QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
    if (!exec(q)) {
        QSqlDatabase::database(m_connection).rollback();
        return false;
    }
    return QSqlDatabase::database(m_connection).commit();
}

QList<WorkspacePerson> WorkspaceStore::people() const
{
    QSqlQuery q = prepare(u"SELECT %1 FROM people ORDER BY position"_s.arg(personColumns));
    QList<WorkspacePerson> out;
    if (exec(q)) {
        while (q.next())
            out.append(personFrom(q));
    }
    return out;
}

std::optional<WorkspacePerson> WorkspaceStore::person(const QString &id) const
{
    QSqlQuery q = prepare(u"SELECT %1 FROM people WHERE id = ?"_s.arg(personColumns));
    q.addBindValue(id);
    if (exec(q) && q.next())
        return personFrom(q);
    return std::nullopt;
}

bool WorkspaceStore::opens(const QString &personId, const QString &app) const
{
    const std::optional<WorkspacePerson> found = person(personId);
    return found && (found->owner || found->apps.contains(app));
}

std::optional<WorkspacePerson> WorkspaceStore::personByEmail(const QString &email) const
{
    QSqlQuery q = prepare(u"SELECT %1 FROM people WHERE lower(email) = lower(?)"_s.arg(personColumns));
    q.addBindValue(email.trimmed());
    if (exec(q) && q.next())
        return personFrom(q);
    return std::nullopt;
}

void WorkspaceStore::addPerson(const WorkspacePerson &p, int position)
{
    QSqlQuery q = prepare(u"INSERT INTO people (id, position, name, email, role, owner, books_owner, apps,"
                          " background, accent, text_size) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s);
    q.addBindValue(p.id);
    q.addBindValue(position);
    q.addBindValue(p.name);
    q.addBindValue(p.email);
    q.addBindValue(p.role);
    q.addBindValue(p.owner);
    q.addBindValue(p.books_owner);
    q.addBindValue(appsToText(p.apps));
    q.addBindValue(nullable(p.background));
    q.addBindValue(nullable(p.accent));
    q.addBindValue(nullable(p.text_size));
    exec(q);
}

WorkspaceStore::NewSession WorkspaceStore::createSession(const QString &personId)
{
    NewSession made;
    made.token = WorkspaceTokens::random(32);
    made.session.personId = personId;
    made.session.csrf = WorkspaceTokens::csrfOf(made.token);

    QSqlQuery q = prepare(u"INSERT INTO sessions (token_hash, person_id, csrf, created_at) VALUES (?, ?, ?, ?)"_s);
    q.addBindValue(WorkspaceTokens::hash(made.token));
    q.addBindValue(personId);
    q.addBindValue(WorkspaceTokens::hash(made.session.csrf));
    q.addBindValue(now());
    if (exec(q))
        made.session.id = q.lastInsertId().toLongLong();
    return made;
}

std::optional<WorkspaceStore::Session> WorkspaceStore::session(const QString &token) const
{
    if (token.isEmpty())
        return std::nullopt;
    QSqlQuery q = prepare(u"SELECT id, person_id, csrf FROM sessions WHERE token_hash = ? AND ended_at IS NULL"_s);
    q.addBindValue(WorkspaceTokens::hash(token));
    if (!exec(q) || !q.next())
        return std::nullopt;
    return Session { q.value(0).toLongLong(), q.value(1).toString(), WorkspaceTokens::csrfOf(token) };
}

void WorkspaceStore::endSession(qint64 id)
{
    QSqlQuery q = prepare(u"UPDATE sessions SET ended_at = ? WHERE id = ? AND ended_at IS NULL"_s);
    q.addBindValue(now());
    q.addBindValue(id);
    exec(q);
}

int WorkspaceStore::endOtherSessions(const QString &personId, qint64 keep)
{
    QSqlQuery q = prepare(u"UPDATE sessions SET ended_at = ? WHERE person_id = ? AND id != ? AND ended_at IS NULL"_s);
    q.addBindValue(now());
    q.addBindValue(personId);
    q.addBindValue(keep);
    return exec(q) ? q.numRowsAffected() : 0;
}

QString WorkspaceStore::issueOnce(const QString &table, const QString &columns, const QVariantList &values)
{
    const QString secret = WorkspaceTokens::random(24);
    const QString marks = QStringList(values.size() + 1, u"?"_s).join(", "_L1);
    QSqlQuery q = prepare(u"INSERT INTO %1 VALUES (%2)"_s.arg(table + u" ("_s + columns + ')'_L1, marks));
    q.addBindValue(WorkspaceTokens::hash(secret));
    for (const QVariant &value : values)
        q.addBindValue(value);
    exec(q);
    return secret;
}

QString WorkspaceStore::createSignInCode(const QString &personId, const QString &challenge, int ttlSeconds)
{
    // Starts that never finish would otherwise pile up until one does.
    QSqlQuery purge = prepare(u"DELETE FROM sign_in_codes WHERE expires_at <= ?"_s);
    purge.addBindValue(now());
    exec(purge);
    return issueOnce(u"sign_in_codes"_s, u"code_hash, person_id, challenge, expires_at"_s,
        { personId, challenge, now() + qint64(ttlSeconds) * 1000 });
}

std::optional<QVariantList> WorkspaceStore::takeOnce(const QString &table, const QString &hashColumn,
    const QString &secret, const QString &columns, const QString &lapsed, qint64 lapsedAt)
{
    QSqlQuery purge = prepare(u"DELETE FROM %1 WHERE %2 <= ?"_s.arg(table, lapsed));
    purge.addBindValue(lapsedAt);
    exec(purge);
    if (secret.isEmpty())
        return std::nullopt;

    const QString hash = WorkspaceTokens::hash(secret);
    QSqlQuery find = prepare(u"SELECT %1 FROM %2 WHERE %3 = ?"_s.arg(columns, table, hashColumn));
    find.addBindValue(hash);
    if (!exec(find) || !find.next())
        return std::nullopt;
    QVariantList row;
    for (int i = 0; i < find.record().count(); ++i)
        row.append(find.value(i));
    find.finish();

    QSqlQuery spend = prepare(u"DELETE FROM %1 WHERE %2 = ?"_s.arg(table, hashColumn));
    spend.addBindValue(hash);
    exec(spend);
    return row;
}

WorkspaceStore::Redemption WorkspaceStore::redeemSignInCode(const QString &code, const QString &verifier)
{
    const std::optional<QVariantList> row
        = takeOnce(u"sign_in_codes"_s, u"code_hash"_s, code, u"person_id, challenge"_s, u"expires_at"_s, now());
    if (!row)
        return {};
    if (!WorkspaceTokens::equal(WorkspaceTokens::challengeOf(verifier), row->at(1).toString()))
        return { Redeemed::WrongVerifier, {} };
    return { Redeemed::Ok, row->at(0).toString() };
}

void WorkspaceStore::setAppearance(const QString &personId, Appearance which, const QString &value)
{
    const QString column = which == Appearance::Background ? u"background"_s
        : which == Appearance::Accent                      ? u"accent"_s
                                                           : u"text_size"_s;
    QSqlQuery q = prepare(u"UPDATE people SET %1 = ? WHERE id = ?"_s.arg(column));
    q.addBindValue(value);
    q.addBindValue(personId);
    exec(q);
}

QString WorkspaceStore::createGoogleState(const QString &personId, const QString &service)
{
    return issueOnce(u"google_states"_s, u"state_hash, person_id, service, created_at"_s, { personId, service, now() });
}

bool WorkspaceStore::connectGoogle(const QString &state, const QString &service)
{
    const std::optional<QVariantList> row = takeOnce(u"google_states"_s, u"state_hash"_s, state,
        u"person_id, service"_s, u"created_at"_s, now() - googleStateLifetimeMs);
    if (!row || row->at(1).toString() != service)
        return false;

    QSqlQuery q
        = prepare(u"INSERT OR REPLACE INTO google_connections (person_id, service, connected_at) VALUES (?, ?, ?)"_s);
    q.addBindValue(row->at(0));
    q.addBindValue(service);
    q.addBindValue(now());
    return exec(q);
}

QStringList WorkspaceStore::googleConnections(const QString &personId) const
{
    QSqlQuery q = prepare(u"SELECT service FROM google_connections WHERE person_id = ? ORDER BY service"_s);
    q.addBindValue(personId);
    QStringList out;
    if (exec(q)) {
        while (q.next())
            out.append(q.value(0).toString());
    }
    return out;
}
