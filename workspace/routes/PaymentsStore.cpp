#include "workspace/routes/PaymentsStore.h"

#include "workspace/routes/BooksSql.h"

#include "money/TarnLedgerDates.h"

#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;
using namespace BooksSql;

namespace {

constexpr qsizetype referenceLimit = 120;
// Ten whole digits of dollars, as the app's money input takes.
constexpr qint64 amountLimit = 999'999'999'999;
// A schedule left off for years catches up this many runs at most.
constexpr int catchUpLimit = 60;

const char *const schema[] = {
    "CREATE TABLE IF NOT EXISTS payment_schedules ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL, client TEXT NOT NULL,"
    " payment_profile_id TEXT NOT NULL REFERENCES payment_cards(payment_profile_id),"
    " amount INTEGER NOT NULL CHECK (amount > 0), interval TEXT NOT NULL, next_on TEXT NOT NULL,"
    " status TEXT NOT NULL)",
    // A card page's token is kept only as its SHA-256, as session tokens are.
    "CREATE TABLE IF NOT EXISTS payment_card_sessions ("
    " id TEXT PRIMARY KEY, token_hash TEXT NOT NULL UNIQUE, client_id TEXT NOT NULL,"
    " person_id TEXT NOT NULL, expires_at INTEGER NOT NULL, card_type TEXT, last4 TEXT, expiration TEXT,"
    " completed_at INTEGER, payment_profile_id TEXT)",
};

QDate nextDay(const QDate &day, const QString &interval)
{
    return interval == "weekly"_L1 ? day.addDays(7) : day.addMonths(1);
}

QJsonObject scheduleJSON(const QSqlQuery &q)
{
    return { { u"id"_s, q.value(0).toString() }, { u"client_id"_s, q.value(1).toString() },
        { u"payment_profile_id"_s, q.value(2).toString() }, { u"amount"_s, q.value(3).toLongLong() },
        { u"interval"_s, q.value(4).toString() }, { u"next_on"_s, q.value(5).toString() },
        { u"status"_s, q.value(6).toString() } };
}

constexpr auto scheduleColumns = "id, client_id, payment_profile_id, amount, interval, next_on, status"_L1;

QJsonObject scheduleJSON(const QSqlDatabase &db, const QString &id)
{
    QSqlQuery q = run(db, u"SELECT %1 FROM payment_schedules WHERE id = ?"_s.arg(scheduleColumns), { id });
    return q.next() ? scheduleJSON(q) : QJsonObject();
}

QJsonObject paymentJSON(const QSqlQuery &q)
{
    QJsonObject payment { { u"id"_s, q.value(0).toString() }, { u"client_id"_s, q.value(1).toString() },
        { u"client"_s, q.value(2).toString() }, { u"amount"_s, q.value(4).toLongLong() },
        { u"status"_s, q.value(5).toString() }, { u"date"_s, q.value(6).toString() },
        { u"method"_s, q.value(7).toString() }, { u"version"_s, q.value(9).toLongLong() } };
    if (!q.value(3).isNull())
        payment.insert(u"invoice_id"_s, q.value(3).toString());
    if (!q.value(8).isNull())
        payment.insert(u"reference"_s, q.value(8).toString());
    return payment;
}

constexpr auto paymentColumns
    = "id, client_id, client, invoice_id, amount, status, date, method, reference, version"_L1;

// Why a schedule in `status` cannot take `action`, or nothing when it can.
std::optional<QString> scheduleRefusal(const QString &status, const QString &action)
{
    if (status == "Cancelled"_L1)
        return u"This schedule was cancelled."_s;
    if (action == "pause"_L1 && status == "Paused"_L1)
        return u"This schedule is already paused."_s;
    if (action == "resume"_L1 && status == "Active"_L1)
        return u"This schedule is not paused."_s;
    return std::nullopt;
}

WorkspaceReply createSchedule(const QSqlDatabase &db, const QJsonObject &body)
{
    const QString clientID = body.value("client_id"_L1).toString();
    const QString profile = body.value("payment_profile_id"_L1).toString();
    const qint64 amount = body.value("amount"_L1).toInteger();
    const QString interval = body.value("interval"_L1).toString();
    const QString nextOn = body.value("next_on"_L1).toString();
    const QString client = text(db, u"SELECT name FROM clients WHERE id = ?"_s, { clientID });
    if (client.isEmpty())
        return WorkspaceReply::error(404, u"That client is not in the workspace."_s);
    if (single(db, u"SELECT COUNT(*) FROM payment_cards WHERE payment_profile_id = ? AND client_id = ?"_s,
            { profile, clientID })
        == 0)
        return WorkspaceReply::error(404, u"That card is not saved for this client."_s);
    if (amount < 1 || amount > amountLimit)
        return WorkspaceReply::error(400, u"Charge at least $0.01 each time."_s);
    if (interval != "monthly"_L1 && interval != "weekly"_L1)
        return WorkspaceReply::error(400, u"A schedule runs \"monthly\" or \"weekly\"."_s);
    if (!TarnLedgerDates::isDay(nextOn) || QDate::fromString(nextOn, Qt::ISODate) < QDate::currentDate())
        return WorkspaceReply::error(400, u"Give the first day as YYYY-MM-DD, today or later."_s);
    const QString id = newID("sch-"_L1);
    run(db,
        u"INSERT INTO payment_schedules (id, client_id, client, payment_profile_id, amount, interval, next_on,"
        " status) VALUES (?, ?, ?, ?, ?, ?, ?, 'Active')"_s,
        { id, clientID, client, profile, amount, interval, nextOn });
    return WorkspaceReply::json(scheduleJSON(db, id));
}

} // namespace

namespace PaymentsStore {

QString runReference(const QString &interval)
{
    return interval == "weekly"_L1 ? u"Weekly charge"_s : u"Monthly charge"_s;
}

bool prepare(const QSqlDatabase &db)
{
    if (!runAll(db, schema))
        return false;
    if (single(db, u"SELECT COUNT(*) FROM pragma_table_info('payments') WHERE name = 'version'"_s) == 0)
        return run(db, u"ALTER TABLE payments ADD COLUMN version INTEGER NOT NULL DEFAULT 1"_s).isActive();
    return true;
}

void runDueSchedules(const QSqlDatabase &db, const QDate &today)
{
    struct Due {
        QString id;
        QString clientID;
        QString client;
        qint64 amount;
        QString interval;
        QDate next;
    };
    QList<Due> due;
    QSqlQuery q = run(db,
        u"SELECT id, client_id, client, amount, interval, next_on FROM payment_schedules"
        " WHERE status = 'Active' AND next_on <= ?"_s,
        { today.toString(Qt::ISODate) });
    while (q.next()) {
        due.append({ q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toLongLong(),
            q.value(4).toString(), QDate::fromString(q.value(5).toString(), Qt::ISODate) });
    }
    for (Due &schedule : due) {
        QSqlDatabase writer = db;
        writer.transaction();
        for (int runs = 0; schedule.next.isValid() && schedule.next <= today && runs < catchUpLimit; ++runs) {
            const QString day = schedule.next.toString(Qt::ISODate);
            run(db,
                u"INSERT OR IGNORE INTO payments (id, client_id, client, amount, status, date, method, reference)"
                " VALUES (?, ?, ?, ?, 'Paid', ?, 'card', ?)"_s,
                { u"pay-%1-%2"_s.arg(schedule.id, day), schedule.clientID, schedule.client, schedule.amount, day,
                    runReference(schedule.interval) });
            schedule.next = nextDay(schedule.next, schedule.interval);
        }
        while (schedule.next <= today)
            schedule.next = nextDay(schedule.next, schedule.interval);
        run(db, u"UPDATE payment_schedules SET next_on = ? WHERE id = ?"_s,
            { schedule.next.toString(Qt::ISODate), schedule.id });
        writer.commit();
    }
}

QJsonObject paymentJSON(const QSqlDatabase &db, const QString &id)
{
    QSqlQuery q = run(db, u"SELECT %1 FROM payments WHERE id = ?"_s.arg(paymentColumns), { id });
    return q.next() ? ::paymentJSON(q) : QJsonObject();
}

QJsonArray paymentsJSON(const QSqlDatabase &db)
{
    QJsonArray payments;
    QSqlQuery q = run(db, u"SELECT %1 FROM payments ORDER BY date DESC, id"_s.arg(paymentColumns));
    while (q.next())
        payments.append(::paymentJSON(q));
    return payments;
}

QJsonArray clientsJSON(const QSqlDatabase &db)
{
    QJsonArray clients;
    QSqlQuery q = run(db, u"SELECT id, name FROM clients ORDER BY name COLLATE NOCASE, id"_s);
    while (q.next())
        clients.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() } });
    return clients;
}

QJsonObject cardsJSON(const QSqlDatabase &db, const QString &clientID)
{
    QJsonArray cards;
    QSqlQuery q = run(db,
        u"SELECT payment_profile_id, card_type, last4, expiration FROM payment_cards WHERE client_id = ?"
        " ORDER BY rowid"_s,
        { clientID });
    while (q.next()) {
        cards.append(QJsonObject { { u"payment_profile_id"_s, q.value(0).toString() },
            { u"card_type"_s, q.value(1).toString() }, { u"last4"_s, q.value(2).toString() },
            { u"expiration"_s, q.value(3).toString() }, { u"saved"_s, true } });
    }
    QJsonArray schedules;
    QSqlQuery s = run(db,
        u"SELECT %1 FROM payment_schedules WHERE client_id = ? AND status != 'Cancelled' ORDER BY next_on, id"_s.arg(
            scheduleColumns),
        { clientID });
    while (s.next())
        schedules.append(scheduleJSON(s));
    return { { u"cards"_s, cards }, { u"schedules"_s, schedules } };
}

WorkspaceReply recordPayment(const QSqlDatabase &db, const QJsonObject &body)
{
    const QString clientID = body.value("client_id"_L1).toString();
    const qint64 amount = body.value("amount"_L1).toInteger();
    const QString status = body.value("status"_L1).toString();
    const QString reference = body.value("reference"_L1).toString().trimmed();
    const QString paidOn = body.value("paid_on"_L1).toString();
    if (amount < 1 || amount > amountLimit)
        return WorkspaceReply::error(400, u"Record an amount of at least $0.01."_s);
    if (status != "Paid"_L1 && status != "Pending"_L1)
        return WorkspaceReply::error(400, u"A recorded payment is \"Paid\" or \"Pending\"."_s);
    if (reference.isEmpty() || reference.size() > referenceLimit)
        return WorkspaceReply::error(400, u"Give the payment a reference of up to 120 characters."_s);
    if (!TarnLedgerDates::isDay(paidOn))
        return WorkspaceReply::error(400, u"Give the day it was paid as YYYY-MM-DD."_s);
    const QString client = text(db, u"SELECT name FROM clients WHERE id = ?"_s, { clientID });
    if (client.isEmpty())
        return WorkspaceReply::error(404, u"That client is not in the workspace."_s);
    const QString id = newID("pay-"_L1);
    run(db,
        u"INSERT INTO payments (id, client_id, client, amount, status, date, method, reference)"
        " VALUES (?, ?, ?, ?, ?, ?, 'offline', ?)"_s,
        { id, clientID, client, amount, status, paidOn, reference });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id } });
}

WorkspaceReply updatePayment(const QSqlDatabase &db, const QString &id, const QJsonObject &body)
{
    const QJsonObject current = paymentJSON(db, id);
    if (current.isEmpty())
        return WorkspaceReply::error(404, u"That payment is not in the terminal."_s);
    if (current.value("method"_L1).toString() != "offline"_L1)
        return WorkspaceReply::error(
            400, u"Card payments and refunds cannot be changed; refund a card payment instead."_s);
    if (!body.value("version"_L1).isDouble())
        return WorkspaceReply::error(400, u"A change names the \"version\" it was based on."_s);
    if (body.value("version"_L1).toInteger() != current.value("version"_L1).toInteger()) {
        return WorkspaceReply::json(
            QJsonObject { { u"error"_s, u"Someone changed this payment in the meantime; it now shows their change."_s },
                { u"payment"_s, current } },
            409);
    }
    QString status = current.value("status"_L1).toString();
    QString reference = current.value("reference"_L1).toString();
    QString paidOn = current.value("date"_L1).toString();
    if (body.contains("status"_L1)) {
        const QString wanted = body.value("status"_L1).toString();
        if (wanted != status && !(status == "Pending"_L1 && wanted == "Paid"_L1))
            return WorkspaceReply::error(
                400, u"A pending payment can be marked paid; nothing else changes its status."_s);
        status = wanted;
    }
    if (body.contains("reference"_L1)) {
        reference = body.value("reference"_L1).toString().trimmed();
        if (reference.isEmpty() || reference.size() > referenceLimit)
            return WorkspaceReply::error(400, u"Give the payment a reference of up to 120 characters."_s);
    }
    if (body.contains("paid_on"_L1)) {
        paidOn = body.value("paid_on"_L1).toString();
        if (!TarnLedgerDates::isDay(paidOn))
            return WorkspaceReply::error(400, u"Give the day it was paid as YYYY-MM-DD."_s);
    }
    run(db, u"UPDATE payments SET status = ?, reference = ?, date = ?, version = version + 1 WHERE id = ?"_s,
        { status, reference, paidOn, id });
    return WorkspaceReply::json(paymentJSON(db, id));
}

WorkspaceReply manageSchedule(const QSqlDatabase &db, const QJsonObject &body)
{
    const QString action = body.value("action"_L1).toString();
    if (action == "create"_L1)
        return createSchedule(db, body);
    static const QHash<QString, QString> statusAfter { { u"pause"_s, u"Paused"_s }, { u"resume"_s, u"Active"_s },
        { u"cancel"_s, u"Cancelled"_s } };
    if (!statusAfter.contains(action))
        return WorkspaceReply::error(400, u"An action is \"create\", \"pause\", \"resume\" or \"cancel\"."_s);
    const QString id = body.value("schedule_id"_L1).toString();
    const QJsonObject schedule = scheduleJSON(db, id);
    if (schedule.isEmpty())
        return WorkspaceReply::error(404, u"That schedule does not exist."_s);
    if (const std::optional<QString> refusal = scheduleRefusal(schedule.value("status"_L1).toString(), action))
        return WorkspaceReply::error(409, *refusal);
    QString nextOn = schedule.value("next_on"_L1).toString();
    if (action == "resume"_L1) {
        // A paused schedule does not charge for the runs it missed.
        QDate next = QDate::fromString(nextOn, Qt::ISODate);
        while (next.isValid() && next < QDate::currentDate())
            next = nextDay(next, schedule.value("interval"_L1).toString());
        nextOn = next.toString(Qt::ISODate);
    }
    run(db, u"UPDATE payment_schedules SET status = ?, next_on = ? WHERE id = ?"_s,
        { statusAfter.value(action), nextOn, id });
    return WorkspaceReply::json(scheduleJSON(db, id));
}

} // namespace PaymentsStore
