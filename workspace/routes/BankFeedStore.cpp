#include "workspace/routes/BankFeedStore.h"

#include "money/TarnLedgerDates.h"
#include "workspace/WorkspaceSeed.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BankFeedStream.h"
#include "workspace/routes/BooksLedger.h"
#include "workspace/routes/BooksSql.h"

#include <QDate>
#include <QJsonArray>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;
using BooksSql::newID;
using BooksSql::run;
using BooksSql::single;
using BooksSql::text;

namespace {

// The bank limit of the books' statement import, either way.
constexpr qint64 bankLimit = 100'000'000'000;
constexpr int recentRows = 8;

QString today()
{
    return QDate::currentDate().toString(Qt::ISODate);
}

QJsonValue valueOrNull(const QVariant &value)
{
    if (value.isNull())
        return QJsonValue(QJsonValue::Null);
    return value.typeId() == QMetaType::QString ? QJsonValue(value.toString()) : QJsonValue(value.toLongLong());
}

} // namespace

BankFeedStore::BankFeedStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool BankFeedStore::isOwner(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->owner;
}

bool BankFeedStore::hasAccounts() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM bankfeed_accounts"_s) > 0;
}

void BankFeedStore::deliver(qint64 nowMs)
{
    QSqlDatabase db = m_store.database();
    // One transaction: an account's rows and its count of them go in together.
    db.transaction();
    QSqlQuery q = run(db, u"SELECT id, bank_account_id, connected_at, history, delivered FROM bankfeed_accounts"_s);
    BooksLedger ledger(db);
    while (q.next()) {
        const qint64 connected = q.value(2).toLongLong();
        const int history = q.value(3).toInt();
        const int due = BankFeedStream::dueCount(connected, history, nowMs);
        const int delivered = q.value(4).toInt();
        if (due <= delivered)
            continue;
        for (int n = std::max(delivered, due - BankFeedStream::catchUpRows); n < due; ++n) {
            const BankFeedStream::Row row = BankFeedStream::row(connected, history, n);
            ledger.addFeedRow(q.value(1).toString(), row.date, row.description, row.amount, row.reference);
        }
        run(db, u"UPDATE bankfeed_accounts SET delivered = ? WHERE id = ?"_s, { due, q.value(0) });
    }
    db.commit();
}

QString BankFeedStore::insertAccount(int bankIndex, const QString &me, qint64 nowMs, int history, int delivered)
{
    const QSqlDatabase db = m_store.database();
    const BankFeedStream::Account &bank = BankFeedStream::accounts().at(bankIndex);
    const QString books = u"acct-"_s + bank.code;
    // A books bank account of that code is fed as it is; otherwise the
    // connection opens one.
    run(db, u"INSERT OR IGNORE INTO books_accounts (id, code, name, type, bank) VALUES (?, ?, ?, 'Asset', 1)"_s,
        { books, bank.code, bank.name });
    const QString id = newID("feed-"_L1);
    run(db,
        u"INSERT INTO bankfeed_accounts (id, bank_index, bank_account_id, name, mask, connected_at, connected_by,"
        " history, delivered) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { id, bankIndex, books, bank.name, bank.mask, nowMs, me, history, delivered });
    return id;
}

WorkspaceReply BankFeedStore::connect(const QString &me, qint64 nowMs)
{
    const QSqlDatabase db = m_store.database();
    const int count = int(BankFeedStream::accounts().size());
    for (int index = 0; index < count; ++index) {
        if (single(db, u"SELECT COUNT(*) FROM bankfeed_accounts WHERE bank_index = ?"_s, { index }) > 0)
            continue;
        (void)insertAccount(index, me, nowMs, BankFeedStream::historyRows, 0);
        return summary(nowMs);
    }
    return WorkspaceReply::error(409, u"Every account at the bank is already connected."_s);
}

qint64 BankFeedStore::booksBalance(const QString &bankAccountID, const QString &day) const
{
    return single(m_store.database(),
        u"SELECT COALESCE(SUM(l.debit - l.credit), 0) FROM books_lines l JOIN books_entries e ON e.id = l.entry_id"
        " WHERE l.account_id = ? AND e.entry_date <= ?"_s,
        { bankAccountID, day });
}

QJsonValue BankFeedStore::bankBalance(const QString &id, const QString &day) const
{
    const QSqlDatabase db = m_store.database();
    QSqlQuery q = run(db,
        u"SELECT b.day, b.balance, a.bank_account_id FROM bankfeed_baselines b"
        " JOIN bankfeed_accounts a ON a.id = b.account_id WHERE b.account_id = ?"_s,
        { id });
    if (!q.next() || q.value(0).toString() > day)
        return QJsonValue(QJsonValue::Null);
    return q.value(1).toLongLong()
        + single(db,
            u"SELECT COALESCE(SUM(amount), 0) FROM books_bank_rows WHERE bank_account_id = ? AND source = 'mercury'"
            " AND row_date > ? AND row_date <= ?"_s,
            { q.value(2), q.value(0), day });
}

QJsonObject BankFeedStore::account(const QString &id) const
{
    const QSqlDatabase db = m_store.database();
    QSqlQuery q = run(db,
        u"SELECT a.bank_account_id, a.name, a.mask, a.connected_at, b.day, b.balance,"
        " (SELECT r.day FROM bankfeed_reconciliations r WHERE r.account_id = a.id ORDER BY r.created_at DESC,"
        "  r.rowid DESC LIMIT 1),"
        " (SELECT r.difference FROM bankfeed_reconciliations r WHERE r.account_id = a.id"
        "  ORDER BY r.created_at DESC, r.rowid DESC LIMIT 1)"
        " FROM bankfeed_accounts a LEFT JOIN bankfeed_baselines b ON b.account_id = a.id WHERE a.id = ?"_s,
        { id });
    if (!q.next())
        return {};
    const QString books = q.value(0).toString();
    return { { u"id"_s, id }, { u"bank_account_id"_s, books }, { u"name"_s, q.value(1).toString() },
        { u"mask"_s, q.value(2).toString() }, { u"connected_at"_s, isoTime(q.value(3).toLongLong()) },
        { u"balance"_s, bankBalance(id, today()) }, { u"books_balance"_s, booksBalance(books, today()) },
        { u"uncategorized"_s,
            single(db,
                u"SELECT COUNT(*) FROM books_bank_rows WHERE bank_account_id = ? AND source = 'mercury'"
                " AND entry_id IS NULL"_s,
                { books }) },
        { u"baseline_date"_s, valueOrNull(q.value(4)) }, { u"baseline_balance"_s, valueOrNull(q.value(5)) },
        { u"reconciled_on"_s, valueOrNull(q.value(6)) }, { u"reconciled_difference"_s, valueOrNull(q.value(7)) } };
}

WorkspaceReply BankFeedStore::summary(qint64 nowMs)
{
    deliver(nowMs);
    const QSqlDatabase db = m_store.database();
    QJsonArray accounts;
    qint64 uncategorized = 0;
    QSqlQuery q = run(db, u"SELECT id FROM bankfeed_accounts ORDER BY bank_index"_s);
    while (q.next()) {
        const QJsonObject one = account(q.value(0).toString());
        uncategorized += one.value("uncategorized"_L1).toInteger();
        accounts.append(one);
    }
    QJsonArray rows;
    QSqlQuery r = run(db,
        u"SELECT b.id, b.bank_account_id, b.row_date, b.description, b.amount, b.entry_id FROM books_bank_rows b"
        " JOIN bankfeed_accounts a ON a.bank_account_id = b.bank_account_id WHERE b.source = 'mercury'"
        " ORDER BY b.row_date DESC, b.seq DESC LIMIT ?"_s,
        { recentRows });
    while (r.next()) {
        rows.append(QJsonObject { { u"id"_s, r.value(0).toString() }, { u"bank_account_id"_s, r.value(1).toString() },
            { u"row_date"_s, r.value(2).toString() }, { u"description"_s, r.value(3).toString() },
            { u"amount"_s, r.value(4).toLongLong() }, { u"source"_s, u"mercury"_s },
            { u"mercury_status"_s, r.value(5).isNull() ? u"uncategorized"_s : u"matched"_s } });
    }
    return WorkspaceReply::json(QJsonObject { { u"accounts"_s, accounts }, { u"uncategorized"_s, uncategorized },
        { u"available"_s, BankFeedStream::accounts().size() - accounts.size() }, { u"rows"_s, rows } });
}

WorkspaceReply BankFeedStore::setBaseline(const QString &me, const QString &accountID, const QJsonObject &body)
{
    const QSqlDatabase db = m_store.database();
    if (single(db, u"SELECT COUNT(*) FROM bankfeed_accounts WHERE id = ?"_s, { accountID }) == 0)
        return WorkspaceReply::error(404, u"That account is not connected to the bank feed."_s);
    const QString day = body.value("date"_L1).toString();
    if (!TarnLedgerDates::isDay(day) || day > today())
        return WorkspaceReply::error(400, u"Give the day of the balance, today or earlier."_s);
    const QJsonValue balance = body.value("balance"_L1);
    const qint64 cents = balance.toInteger(bankLimit + 1);
    if (!balance.isDouble() || cents < -bankLimit || cents > bankLimit)
        return WorkspaceReply::error(400, u"Give the balance in cents, within the bank limit."_s);
    run(db,
        u"INSERT OR REPLACE INTO bankfeed_baselines (account_id, day, balance, set_by, set_at)"
        " VALUES (?, ?, ?, ?, ?)"_s,
        { accountID, day, cents, me, BooksSql::nowMs() });
    return summary(BooksSql::nowMs());
}

WorkspaceReply BankFeedStore::reconcile(const QString &me, const QString &accountID, const QJsonObject &body)
{
    const qint64 now = BooksSql::nowMs();
    deliver(now);
    const QSqlDatabase db = m_store.database();
    const QString books = text(db, u"SELECT bank_account_id FROM bankfeed_accounts WHERE id = ?"_s, { accountID });
    if (books.isNull())
        return WorkspaceReply::error(404, u"That account is not connected to the bank feed."_s);
    const QString day = body.value("date"_L1).toString();
    if (!TarnLedgerDates::isDay(day) || day > today())
        return WorkspaceReply::error(400, u"Reconcile on a day up to today."_s);
    const QString baseline = text(db, u"SELECT day FROM bankfeed_baselines WHERE account_id = ?"_s, { accountID });
    if (baseline.isNull())
        return WorkspaceReply::error(409, u"Set the balance the bank showed on a day first."_s);
    if (day < baseline)
        return WorkspaceReply::error(400, u"Reconcile on the baseline's day or later."_s);
    const qint64 external = bankBalance(accountID, day).toInteger();
    const qint64 ledger = booksBalance(books, day);
    const qint64 open = single(db,
        u"SELECT COUNT(*) FROM books_bank_rows WHERE bank_account_id = ? AND source = 'mercury'"
        " AND entry_id IS NULL AND row_date <= ?"_s,
        { books, day });
    const QString id = newID("xrec-"_L1);
    run(db,
        u"INSERT INTO bankfeed_reconciliations (id, account_id, day, external_balance, books_balance, difference,"
        " created_by, created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { id, accountID, day, external, ledger, external - ledger, me, now });
    return WorkspaceReply::json(QJsonObject { { u"id"_s, id }, { u"account_id"_s, accountID }, { u"date"_s, day },
        { u"external_balance"_s, external }, { u"books_balance"_s, ledger }, { u"difference"_s, external - ledger },
        { u"uncategorized"_s, open }, { u"balanced"_s, external == ledger } });
}

void BankFeedStore::plantDemo(qint64 nowMs)
{
    const QSqlDatabase db = m_store.database();
    const QString owner = WorkspaceSeed::ownerId();
    const QString oldest = text(
        db, u"SELECT MIN(row_date) FROM books_bank_rows WHERE bank_account_id = 'acct-1000' AND source = 'mercury'"_s);
    if (!m_store.person(owner) || oldest.isNull())
        return;
    const QString id = insertAccount(0, owner, nowMs, 0, BankFeedStream::dueCount(nowMs, 0, nowMs));
    const QString day = QDate::fromString(oldest, Qt::ISODate).addDays(-1).toString(Qt::ISODate);
    run(db, u"INSERT INTO bankfeed_baselines (account_id, day, balance, set_by, set_at) VALUES (?, ?, ?, ?, ?)"_s,
        { id, day, booksBalance(u"acct-1000"_s, day), owner, nowMs });
}
