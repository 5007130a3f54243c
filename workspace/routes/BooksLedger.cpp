#include "workspace/routes/BooksLedger.h"

#include "workspace/routes/BooksSql.h"

#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"

#include <QDate>
#include <QHash>
#include <QJsonDocument>
#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;
using namespace BooksSql;

namespace {

// The bank's own limit on one row: a billion dollars either way.
constexpr qint64 bankLimit = 100'000'000'000;
constexpr auto receivable = "acct-1200"_L1;
constexpr auto payable = "acct-2000"_L1;
constexpr auto sales = "acct-4000"_L1;

void insertOptional(QJsonObject &object, const QString &key, const QVariant &value)
{
    if (!value.isNull())
        object.insert(key, value.toString());
}

BooksLedger::Outcome badDay(const QString &what)
{
    return BooksLedger::Outcome::refused(400, u"Give the %1 as YYYY-MM-DD."_s.arg(what));
}

QString setting(const QSqlDatabase &db, const QString &key, const QString &fallback)
{
    QSqlQuery q = run(db, u"SELECT value FROM books_settings WHERE key = ?"_s, { key });
    return q.next() ? q.value(0).toString() : fallback;
}

// What an entry moves through one account: its debits less its credits there.
qint64 movement(const QSqlDatabase &db, const QString &entryID, const QString &accountID)
{
    return single(db,
        u"SELECT COALESCE(SUM(debit - credit), 0) FROM books_lines WHERE entry_id = ? AND account_id = ?"_s,
        { entryID, accountID });
}

} // namespace

BooksLedger::BooksLedger(QSqlDatabase db)
    : m_db(std::move(db))
{
}

template <typename Work> BooksLedger::Outcome BooksLedger::inTransaction(Work work)
{
    m_db.transaction();
    Outcome outcome = work();
    if (outcome.ok())
        m_db.commit();
    else
        m_db.rollback();
    return outcome;
}

BooksLedger::Outcome BooksLedger::insertEntry(const QString &date, const QString &memo, const QList<Line> &lines,
    const QString &sourceType, const QString &sourceID, const QString &reverses)
{
    if (!TarnLedgerDates::isDay(date))
        return badDay(u"entry date"_s);
    if (lines.size() < 2)
        return Outcome::refused(400, u"An entry needs at least two lines."_s);
    qint64 debits = 0;
    qint64 credits = 0;
    for (const Line &line : lines) {
        const bool oneSided = (line.debit > 0) != (line.credit > 0);
        if (line.debit < 0 || line.credit < 0 || !oneSided || line.debit > bankLimit || line.credit > bankLimit)
            return Outcome::refused(400, u"Each line is a debit or a credit of a positive amount."_s);
        if (single(m_db, u"SELECT COUNT(*) FROM books_accounts WHERE id = ?"_s, { line.account_id }) == 0)
            return Outcome::refused(400, u"There is no account %1."_s.arg(line.account_id));
        debits += line.debit;
        credits += line.credit;
    }
    if (debits != credits) {
        return Outcome::refused(400,
            u"The entry does not balance: debits %1, credits %2."_s.arg(
                TarnMoneyInput::dollars(debits), TarnMoneyInput::dollars(credits)));
    }
    const QString id = newID("je-"_L1);
    run(m_db,
        u"INSERT INTO books_entries (id, entry_date, memo, source_type, source_id, reverses_id) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, date, memo, orNull(sourceType), orNull(sourceID), orNull(reverses) });
    for (const Line &line : lines) {
        run(m_db, u"INSERT INTO books_lines (entry_id, account_id, debit, credit) VALUES (?, ?, ?, ?)"_s,
            { id, line.account_id, line.debit, line.credit });
    }
    return { 200, {}, { { u"id"_s, id } } };
}

BooksLedger::Outcome BooksLedger::post(const QString &date, const QString &memo, const QList<Line> &lines)
{
    return inTransaction([&] { return insertEntry(date, memo, lines); });
}

BooksLedger::Outcome BooksLedger::reverseInside(const QString &entryID, const QString &date)
{
    QSqlQuery entry = run(m_db, u"SELECT memo FROM books_entries WHERE id = ?"_s, { entryID });
    if (!entry.next())
        return Outcome::refused(404, u"That entry is not in the books."_s);
    if (single(m_db, u"SELECT COUNT(*) FROM books_entries WHERE reverses_id = ?"_s, { entryID }) > 0)
        return Outcome::refused(409, u"That entry was already reversed."_s);
    QList<Line> swapped;
    QSqlQuery lines = run(m_db, u"SELECT account_id, debit, credit FROM books_lines WHERE entry_id = ?"_s, { entryID });
    while (lines.next())
        swapped.append({ lines.value(0).toString(), lines.value(2).toLongLong(), lines.value(1).toLongLong() });
    return insertEntry(date, u"Reversal of "_s + entry.value(0).toString(), swapped, u"reversal"_s, {}, entryID);
}

BooksLedger::Outcome BooksLedger::reverse(const QString &entryID, const QString &date)
{
    return inTransaction([&] { return reverseInside(entryID, date); });
}

BooksLedger::Outcome BooksLedger::voidDocument(const QString &kind, const QString &id, const QString &date)
{
    return inTransaction([&]() -> Outcome {
        QSqlQuery doc
            = run(m_db, u"SELECT entry_id, voided FROM books_documents WHERE id = ? AND kind = ?"_s, { id, kind });
        if (!doc.next())
            return Outcome::refused(404, u"That record is not in the books."_s);
        if (doc.value(1).toInt() != 0)
            return Outcome::refused(409, u"That record is already void."_s);
        if (single(m_db, u"SELECT COUNT(*) FROM books_documents WHERE applies_to = ? AND voided = 0"_s, { id }) > 0)
            return Outcome::refused(409, u"Void its payments first."_s);
        Outcome reversed = reverseInside(doc.value(0).toString(), date);
        if (!reversed.ok())
            return reversed;
        run(m_db, u"UPDATE books_documents SET voided = 1 WHERE id = ?"_s, { id });
        return { 200, {}, { { u"entry_id"_s, reversed.body.value("id"_L1) } } };
    });
}

QPair<qint64, qint64> BooksLedger::totals() const
{
    QSqlQuery q = run(m_db, u"SELECT COALESCE(SUM(debit), 0), COALESCE(SUM(credit), 0) FROM books_lines"_s);
    q.next();
    return { q.value(0).toLongLong(), q.value(1).toLongLong() };
}

QJsonObject BooksLedger::overview() const
{
    QJsonArray accounts;
    QSqlQuery a = run(m_db,
        u"SELECT a.id, a.code, a.name, a.type, a.bank, COALESCE(SUM(l.debit), 0), COALESCE(SUM(l.credit), 0)"
        " FROM books_accounts a LEFT JOIN books_lines l ON l.account_id = a.id GROUP BY a.id ORDER BY a.code"_s);
    while (a.next()) {
        accounts.append(QJsonObject { { u"id"_s, a.value(0).toString() }, { u"code"_s, a.value(1).toString() },
            { u"name"_s, a.value(2).toString() }, { u"type"_s, a.value(3).toString() },
            { u"bank"_s, a.value(4).toLongLong() }, { u"debits"_s, a.value(5).toLongLong() },
            { u"credits"_s, a.value(6).toLongLong() } });
    }

    QJsonArray entries;
    QSqlQuery e = run(m_db,
        u"SELECT e.id, e.entry_date, e.memo, e.source_type, e.source_id, COALESCE(SUM(l.debit), 0)"
        " FROM books_entries e JOIN books_lines l ON l.entry_id = e.id GROUP BY e.seq ORDER BY e.entry_date DESC, e.seq DESC"_s);
    while (e.next()) {
        QJsonObject entry { { u"id"_s, e.value(0).toString() }, { u"entry_date"_s, e.value(1).toString() },
            { u"memo"_s, e.value(2).toString() }, { u"amount"_s, e.value(5).toLongLong() } };
        insertOptional(entry, u"source_type"_s, e.value(3));
        insertOptional(entry, u"source_id"_s, e.value(4));
        entries.append(entry);
    }

    // Documents with what is still owed on them: the amount less the
    // payments applied to them that stand.
    QJsonArray bills, invoices, billPayments, receipts;
    QSqlQuery d = run(m_db,
        u"SELECT d.id, d.kind, d.party, d.number, d.document_date, d.due_date, d.amount, d.applies_to, d.voided,"
        " (SELECT COALESCE(SUM(p.amount), 0) FROM books_documents p WHERE p.applies_to = d.id AND p.voided = 0)"
        " FROM books_documents d ORDER BY d.document_date DESC, d.id"_s);
    while (d.next()) {
        const QString kind = d.value(1).toString();
        const qint64 amount = d.value(6).toLongLong();
        const bool voided = d.value(8).toInt() != 0;
        const qint64 left = voided ? 0 : amount - d.value(9).toLongLong();
        const QString status = voided ? u"Voided"_s
            : left == 0               ? u"Paid"_s
            : left < amount           ? u"Partly paid"_s
                                      : u"Open"_s;
        if (kind == "bill"_L1 || kind == "invoice"_L1) {
            const bool bill = kind == "bill"_L1;
            QJsonObject doc { { u"id"_s, d.value(0).toString() },
                { bill ? u"vendor"_s : u"customer"_s, d.value(2).toString() },
                { bill ? u"due_date"_s : u"due_on"_s, d.value(5).toString() }, { u"amount"_s, amount },
                { u"remaining"_s, left }, { u"status"_s, status } };
            insertOptional(doc, bill ? u"bill_number"_s : u"invoice_number"_s, d.value(3));
            (bill ? bills : invoices).append(doc);
        } else {
            const bool payment = kind == "bill_payment"_L1;
            QJsonObject doc { { u"id"_s, d.value(0).toString() }, { u"amount"_s, amount },
                { payment ? u"bill_id"_s : u"invoice_id"_s, d.value(7).toString() },
                { payment ? u"vendor"_s : u"customer"_s, d.value(2).toString() },
                { payment ? u"paid_on"_s : u"received_on"_s, d.value(4).toString() },
                { u"status"_s, voided ? u"Voided"_s : u"Posted"_s } };
            (payment ? billPayments : receipts).append(doc);
        }
    }

    QJsonArray bankRows, bankMatched;
    QSqlQuery r = run(m_db,
        u"SELECT b.id, b.bank_account_id, b.row_date, b.description, b.amount, b.source, b.entry_id, e.source_type"
        " FROM books_bank_rows b LEFT JOIN books_entries e ON e.id = b.entry_id ORDER BY b.row_date DESC, b.seq DESC"_s);
    while (r.next()) {
        if (r.value(6).isNull()) {
            QJsonObject row { { u"id"_s, r.value(0).toString() }, { u"bank_account_id"_s, r.value(1).toString() },
                { u"row_date"_s, r.value(2).toString() }, { u"description"_s, r.value(3).toString() },
                { u"amount"_s, r.value(4).toLongLong() }, { u"source"_s, r.value(5).toString() } };
            // A feed row still unmatched here is one the bank feed has not had categorized yet.
            if (r.value(5).toString() == "mercury"_L1)
                row.insert(u"mercury_status"_s, u"uncategorized"_s);
            bankRows.append(row);
        } else {
            QJsonObject row { { u"id"_s, r.value(0).toString() }, { u"row_date"_s, r.value(2).toString() },
                { u"description"_s, r.value(3).toString() }, { u"amount"_s, r.value(4).toLongLong() } };
            insertOptional(row, u"source_type"_s, r.value(7));
            bankMatched.append(row);
        }
    }

    // Entries through a bank account that no bank row is matched to yet.
    QJsonArray matches;
    QSqlQuery m = run(m_db,
        u"SELECT e.id, e.entry_date, e.memo, l.account_id, SUM(l.debit - l.credit) FROM books_entries e"
        " JOIN books_lines l ON l.entry_id = e.id JOIN books_accounts a ON a.id = l.account_id AND a.bank != 0"
        " WHERE NOT EXISTS (SELECT 1 FROM books_bank_rows b WHERE b.entry_id = e.id)"
        " GROUP BY e.seq, l.account_id ORDER BY e.entry_date DESC, e.seq DESC"_s);
    while (m.next()) {
        matches.append(QJsonObject { { u"id"_s, m.value(0).toString() }, { u"entry_date"_s, m.value(1).toString() },
            { u"memo"_s, m.value(2).toString() }, { u"bank_account_id"_s, m.value(3).toString() },
            { u"amount"_s, m.value(4).toLongLong() } });
    }

    const bool linked = setting(m_db, u"source_linked"_s, u"0"_s) == "1"_L1;
    QJsonObject books { { u"company"_s, setting(m_db, u"company"_s, u"Halvard & Co. LLC"_s) },
        { u"source_linked"_s, linked }, { u"accounts"_s, accounts }, { u"entries"_s, entries },
        { u"entry_count"_s, entries.size() }, { u"bills"_s, bills }, { u"bill_payments"_s, billPayments },
        { u"customer_invoices"_s, invoices }, { u"customer_receipts"_s, receipts }, { u"bank_rows"_s, bankRows },
        { u"bank_matches"_s, matches }, { u"bank_matched"_s, bankMatched } };
    if (linked) {
        QJsonArray sourceInvoices, sourcePayments;
        QSqlQuery si = run(m_db,
            u"SELECT i.id, i.amount, i.client, i.invoice_number, i.due_on FROM payment_invoices i WHERE NOT EXISTS"
            " (SELECT 1 FROM books_entries e WHERE e.source_type = 'invoice' AND e.source_id = i.id) ORDER BY i.due_on"_s);
        while (si.next()) {
            sourceInvoices.append(
                QJsonObject { { u"id"_s, si.value(0).toString() }, { u"amount"_s, si.value(1).toLongLong() },
                    { u"title"_s, u"Invoice %1 · %2"_s.arg(si.value(3).toString(), si.value(2).toString()) },
                    { u"date"_s, si.value(4).toString() } });
        }
        QSqlQuery sp = run(m_db,
            u"SELECT p.id, p.amount, p.client, p.date FROM payments p WHERE p.status = 'Paid' AND p.method != 'refund'"
            " AND NOT EXISTS (SELECT 1 FROM books_entries e WHERE e.source_type = 'payment' AND e.source_id = p.id)"
            " ORDER BY p.date"_s);
        while (sp.next()) {
            sourcePayments.append(
                QJsonObject { { u"id"_s, sp.value(0).toString() }, { u"amount"_s, sp.value(1).toLongLong() },
                    { u"title"_s, sp.value(2).toString() }, { u"date"_s, sp.value(3).toString() } });
        }
        books.insert(
            u"source_review"_s, QJsonObject { { u"invoices"_s, sourceInvoices }, { u"payments"_s, sourcePayments } });
    }
    return books;
}

BooksLedger::Outcome BooksLedger::report(const QString &start, const QString &end) const
{
    if (!TarnLedgerDates::isDay(start) || !TarnLedgerDates::isDay(end))
        return badDay(u"period's first and last days"_s);
    const QString sum
        = u"SELECT COALESCE(SUM(%1), 0) FROM books_lines l JOIN books_accounts a ON a.id = l.account_id"
          " JOIN books_entries e ON e.id = l.entry_id WHERE a.type = ? AND e.entry_date BETWEEN ? AND ?"_s;
    const qint64 revenue = single(m_db, sum.arg("l.credit - l.debit"_L1), { u"Income"_s, start, end });
    const qint64 expenses = single(m_db, sum.arg("l.debit - l.credit"_L1), { u"Expense"_s, start, end });
    return { 200, {},
        { { u"start"_s, start }, { u"end"_s, end }, { u"revenue"_s, revenue }, { u"expenses"_s, expenses },
            { u"net_income"_s, revenue - expenses } } };
}

BooksLedger::Outcome BooksLedger::registerPage(
    const QString &start, const QString &end, const QString &accountID, qint64 limit, qint64 offset) const
{
    if (!TarnLedgerDates::isDay(start) || !TarnLedgerDates::isDay(end))
        return badDay(u"period's first and last days"_s);
    if (limit < 1 || limit > 100 || offset < 0)
        return Outcome::refused(400, u"Ask for 1 to 100 entries from offset 0 on."_s);
    const QString where
        = u" FROM books_entries e WHERE e.entry_date BETWEEN ? AND ?"
          " AND (? = '' OR EXISTS (SELECT 1 FROM books_lines l WHERE l.entry_id = e.id AND l.account_id = ?))"_s;
    const QVariantList filter { start, end, accountID, accountID };
    const qint64 total = single(m_db, u"SELECT COUNT(*)"_s + where, filter);
    QVariantList page = filter;
    page << limit << offset;
    QSqlQuery e = run(m_db,
        u"SELECT e.id, e.entry_date, e.memo, e.source_type, e.reverses_id"_s + where
            + u" ORDER BY e.entry_date, e.seq LIMIT ? OFFSET ?"_s,
        page);
    QJsonArray entries;
    while (e.next()) {
        const QString id = e.value(0).toString();
        QJsonArray lines;
        qint64 amount = 0;
        QSqlQuery l = run(m_db,
            u"SELECT a.code, a.name, a.type, l.debit, l.credit FROM books_lines l JOIN books_accounts a"
            " ON a.id = l.account_id WHERE l.entry_id = ? ORDER BY l.rowid"_s,
            { id });
        while (l.next()) {
            amount += l.value(3).toLongLong();
            lines.append(QJsonObject { { u"entry_id"_s, id }, { u"code"_s, l.value(0).toString() },
                { u"name"_s, l.value(1).toString() }, { u"type"_s, l.value(2).toString() },
                { u"debit"_s, l.value(3).toLongLong() }, { u"credit"_s, l.value(4).toLongLong() } });
        }
        QJsonObject entry { { u"id"_s, id }, { u"entry_date"_s, e.value(1).toString() },
            { u"memo"_s, e.value(2).toString() }, { u"amount"_s, amount }, { u"lines"_s, lines } };
        insertOptional(entry, u"source_type"_s, e.value(3));
        insertOptional(entry, u"reverses_id"_s, e.value(4));
        entries.append(entry);
    }
    return { 200, {},
        { { u"start"_s, start }, { u"end"_s, end }, { u"account_id"_s, accountID }, { u"total"_s, total },
            { u"limit"_s, limit }, { u"offset"_s, offset }, { u"entries"_s, entries } } };
}

void BooksLedger::insertBankRow(const QString &bankID, const QString &date, const QString &description, qint64 amount,
    const QString &reference, const QString &source, int occurrence, const QString &entryID)
{
    // What makes two rows the same bank transaction: a statement downloaded
    // twice repeats them exactly, while the k-th of several equal rows in
    // one statement is told apart by its occurrence.
    const QString fingerprint
        = u"%1|%2|%3|%4"_s.arg(date).arg(amount).arg(description.simplified().toLower(), reference);
    run(m_db,
        u"INSERT OR IGNORE INTO books_bank_rows (id, bank_account_id, row_date, description, amount, reference,"
        " source, fingerprint, occurrence, entry_id) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { newID("row-"_L1), bankID, date, description, amount, reference.isNull() ? u""_s : reference, source,
            fingerprint, occurrence, orNull(entryID) });
}

void BooksLedger::addFeedRow(
    const QString &bankID, const QString &date, const QString &description, qint64 amount, const QString &reference)
{
    insertBankRow(bankID, date, description, amount, reference, u"mercury"_s, 1, {});
}

BooksLedger::Outcome BooksLedger::importRows(const QString &bankID, const QJsonArray &rows)
{
    if (single(m_db, u"SELECT COUNT(*) FROM books_accounts WHERE id = ? AND bank != 0"_s, { bankID }) == 0)
        return Outcome::refused(404, u"That bank account is not in the books."_s);
    if (rows.isEmpty() || rows.size() > 500)
        return Outcome::refused(400, u"Choose a CSV with 1–500 transactions."_s);
    const QString closed
        = text(m_db, u"SELECT MAX(statement_date) FROM books_reconciliations WHERE bank_account_id = ?"_s, { bankID });
    return inTransaction([&]() -> Outcome {
        QHash<QString, int> seen;
        const qint64 before = single(m_db, u"SELECT COUNT(*) FROM books_bank_rows"_s);
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const QJsonObject row = rows.at(i).toObject();
            const QString date = row.value("date"_L1).toString();
            const QString description = row.value("description"_L1).toString().trimmed();
            const QString reference = row.value("reference"_L1).toString().trimmed();
            const qint64 amount = row.value("amount"_L1).toInteger();
            const qint64 number = i + 1;
            if (!TarnLedgerDates::isDay(date))
                return Outcome::refused(400, u"Row %1 has an invalid date."_s.arg(number));
            if (description.isEmpty() || description.size() > 500 || reference.size() > 120)
                return Outcome::refused(400, u"Row %1 needs a description and a short reference."_s.arg(number));
            if (amount == 0 || amount < -bankLimit || amount > bankLimit)
                return Outcome::refused(400, u"Row %1 needs a nonzero amount within the bank limit."_s.arg(number));
            if (!closed.isEmpty() && date <= closed)
                return Outcome::refused(
                    409, u"Row %1 falls in the statement closed through %2."_s.arg(number).arg(closed));
            const QString key
                = u"%1|%2|%3|%4"_s.arg(date).arg(amount).arg(description.simplified().toLower(), reference);
            insertBankRow(bankID, date, description, amount, reference, u"file"_s, ++seen[key], {});
        }
        const qint64 imported = single(m_db, u"SELECT COUNT(*) FROM books_bank_rows"_s) - before;
        return { 200, {}, { { u"imported"_s, imported }, { u"duplicates"_s, rows.size() - imported } } };
    });
}

namespace {

struct BankRow {
    QString bankID;
    qint64 amount = 0;
    QString date;
    QString description;
    QString entryID;
    bool locked = false;
};

std::optional<BankRow> bankRow(const QSqlDatabase &db, const QString &id)
{
    QSqlQuery q = run(db,
        u"SELECT bank_account_id, amount, row_date, description, entry_id, locked FROM books_bank_rows WHERE id = ?"_s,
        { id });
    if (!q.next())
        return std::nullopt;
    return BankRow { q.value(0).toString(), q.value(1).toLongLong(), q.value(2).toString(), q.value(3).toString(),
        q.value(4).toString(), q.value(5).toInt() != 0 };
}

enum class Matched { any, not_yet };

// Why a bank row may not change now, if it may not.
std::optional<BooksLedger::Outcome> frozen(const std::optional<BankRow> &row, Matched wanted = Matched::any)
{
    if (!row)
        return BooksLedger::Outcome::refused(404, u"That bank row is not in the books."_s);
    if (row->locked)
        return BooksLedger::Outcome::refused(409, u"That bank row is in a closed statement."_s);
    if (wanted == Matched::not_yet && !row->entryID.isEmpty())
        return BooksLedger::Outcome::refused(409, u"Unmatch the bank row first."_s);
    return std::nullopt;
}

} // namespace

BooksLedger::Outcome BooksLedger::match(const QString &rowID, const QString &entryID)
{
    return inTransaction([&]() -> Outcome {
        const std::optional<BankRow> row = bankRow(m_db, rowID);
        if (std::optional<Outcome> refused = frozen(row, Matched::not_yet))
            return *refused;
        if (single(m_db, u"SELECT COUNT(*) FROM books_entries WHERE id = ?"_s, { entryID }) == 0)
            return Outcome::refused(404, u"That entry is not in the books."_s);
        if (movement(m_db, entryID, row->bankID) != row->amount)
            return Outcome::refused(
                400, u"That entry does not move %1 through this account."_s.arg(TarnMoneyInput::dollars(row->amount)));
        if (single(m_db, u"SELECT COUNT(*) FROM books_bank_rows WHERE entry_id = ?"_s, { entryID }) > 0)
            return Outcome::refused(409, u"That entry is matched to another bank row."_s);
        run(m_db, u"UPDATE books_bank_rows SET entry_id = ? WHERE id = ?"_s, { entryID, rowID });
        return { 200, {}, { { u"entry_id"_s, entryID } } };
    });
}

BooksLedger::Outcome BooksLedger::unmatch(const QString &rowID)
{
    return inTransaction([&]() -> Outcome {
        if (std::optional<Outcome> refused = frozen(bankRow(m_db, rowID)))
            return *refused;
        run(m_db, u"UPDATE books_bank_rows SET entry_id = NULL WHERE id = ?"_s, { rowID });
        return { 200, {}, { { u"ok"_s, true } } };
    });
}

BooksLedger::Outcome BooksLedger::categorize(const QString &rowID, const QString &accountID)
{
    return inTransaction([&]() -> Outcome {
        const std::optional<BankRow> row = bankRow(m_db, rowID);
        if (std::optional<Outcome> refused = frozen(row, Matched::not_yet))
            return *refused;
        if (accountID == row->bankID)
            return Outcome::refused(400, u"Choose an account other than the bank's own."_s);
        const qint64 cents = qAbs(row->amount);
        const QList<Line> lines = row->amount > 0 ? QList<Line> { { row->bankID, cents, 0 }, { accountID, 0, cents } }
                                                  : QList<Line> { { accountID, cents, 0 }, { row->bankID, 0, cents } };
        Outcome posted = insertEntry(row->date, row->description, lines, u"bank_row"_s, rowID);
        if (!posted.ok())
            return posted;
        const QString entryID = posted.body.value("id"_L1).toString();
        run(m_db, u"UPDATE books_bank_rows SET entry_id = ? WHERE id = ?"_s, { entryID, rowID });
        return { 200, {}, { { u"entry_id"_s, entryID } } };
    });
}

BooksLedger::Outcome BooksLedger::reconciliation(const QString &bankID, const QString &date) const
{
    if (!TarnLedgerDates::isDay(date))
        return badDay(u"statement date"_s);
    if (single(m_db, u"SELECT COUNT(*) FROM books_accounts WHERE id = ? AND bank != 0"_s, { bankID }) == 0)
        return Outcome::refused(404, u"That bank account is not in the books."_s);
    const QString closed
        = text(m_db, u"SELECT MAX(statement_date) FROM books_reconciliations WHERE bank_account_id = ?"_s, { bankID });
    const qint64 ledger = single(m_db,
        u"SELECT COALESCE(SUM(l.debit - l.credit), 0) FROM books_lines l JOIN books_entries e ON e.id = l.entry_id"
        " WHERE l.account_id = ? AND e.entry_date <= ?"_s,
        { bankID, date });
    // Money the ledger has moved by the statement date that the bank had not
    // shown by then: no row of the bank's, dated by then, is matched to it.
    const qint64 outstanding = single(m_db,
        u"SELECT COALESCE(SUM(l.debit - l.credit), 0) FROM books_lines l JOIN books_entries e ON e.id = l.entry_id"
        " WHERE l.account_id = ? AND e.entry_date <= ? AND NOT EXISTS (SELECT 1 FROM books_bank_rows b"
        " WHERE b.entry_id = e.id AND b.bank_account_id = l.account_id AND b.row_date <= ?)"_s,
        { bankID, date, date });
    const QString period
        = u" FROM books_bank_rows b WHERE b.bank_account_id = ? AND b.row_date <= ? AND b.row_date > ?"_s;
    const QVariantList rows { bankID, date, closed.isEmpty() ? u""_s : closed };
    QJsonObject preview { { u"bank_account_id"_s, bankID }, { u"statement_date"_s, date },
        { u"ledger_balance"_s, ledger }, { u"outstanding_total"_s, outstanding },
        { u"adjusted_balance"_s, ledger - outstanding },
        { u"imported_count"_s, single(m_db, u"SELECT COUNT(*)"_s + period, rows) },
        { u"unmatched_count"_s, single(m_db, u"SELECT COUNT(*)"_s + period + u" AND b.entry_id IS NULL"_s, rows) },
        { u"future_match_count"_s,
            single(m_db,
                u"SELECT COUNT(*)"_s + period
                    + u" AND EXISTS (SELECT 1 FROM books_entries e WHERE e.id = b.entry_id AND e.entry_date > ?)"_s,
                QVariantList(rows) << date) } };
    if (!closed.isEmpty())
        preview.insert(u"last_closed_date"_s, closed);
    return { 200, {}, preview };
}

BooksLedger::Outcome BooksLedger::close(const QString &bankID, const QString &date, qint64 balance)
{
    Outcome preview = reconciliation(bankID, date);
    if (!preview.ok())
        return preview;
    const QJsonObject figures = preview.body;
    const QString closed = figures.value("last_closed_date"_L1).toString();
    if (!closed.isEmpty() && date <= closed)
        return Outcome::refused(409, u"The statement through %1 is already closed."_s.arg(closed));
    if (figures.value("unmatched_count"_L1).toInteger() > 0)
        return Outcome::refused(409, u"Match or categorize every bank row through this date first."_s);
    const qint64 adjusted = figures.value("adjusted_balance"_L1).toInteger();
    if (balance != adjusted) {
        return Outcome::refused(409,
            u"The statement ending balance differs from the adjusted balance by %1."_s.arg(
                TarnMoneyInput::dollars(balance - adjusted)));
    }
    return inTransaction([&]() -> Outcome {
        const QString id = newID("rec-"_L1);
        run(m_db,
            u"INSERT INTO books_reconciliations (id, bank_account_id, statement_date, statement_balance, preview)"
            " VALUES (?, ?, ?, ?, ?)"_s,
            { id, bankID, date, balance, QString::fromUtf8(QJsonDocument(figures).toJson(QJsonDocument::Compact)) });
        run(m_db, u"UPDATE books_bank_rows SET locked = 1 WHERE bank_account_id = ? AND row_date <= ?"_s,
            { bankID, date });
        return { 200, {}, { { u"id"_s, id }, { u"preview"_s, figures } } };
    });
}

BooksLedger::Outcome BooksLedger::setCompany(const QString &name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > 200)
        return Outcome::refused(400, u"Give the company's legal name."_s);
    run(m_db, u"INSERT OR REPLACE INTO books_settings (key, value) VALUES ('company', ?)"_s, { trimmed });
    return { 200, {}, { { u"ok"_s, true } } };
}

BooksLedger::Outcome BooksLedger::setSourceLinked(bool linked)
{
    run(m_db, u"INSERT OR REPLACE INTO books_settings (key, value) VALUES ('source_linked', ?)"_s,
        { linked ? u"1"_s : u"0"_s });
    return { 200, {}, { { u"ok"_s, true } } };
}

BooksLedger::Outcome BooksLedger::postSource(const QString &kind, const QString &id, const QString &incomeAccountID)
{
    if (setting(m_db, u"source_linked"_s, u"0"_s) != "1"_L1)
        return Outcome::refused(409, u"Link Tarn activity to this company first."_s);
    return inTransaction([&]() -> Outcome {
        if (single(m_db, u"SELECT COUNT(*) FROM books_entries WHERE source_type = ? AND source_id = ?"_s, { kind, id })
            > 0)
            return Outcome::refused(409, u"That record is already in the books."_s);
        if (kind == "invoice"_L1) {
            QSqlQuery i = run(
                m_db, u"SELECT amount, due_on, client, invoice_number FROM payment_invoices WHERE id = ?"_s, { id });
            if (!i.next())
                return Outcome::refused(404, u"That invoice is not in Tarn."_s);
            const QString income = incomeAccountID.isEmpty() ? QString(sales) : incomeAccountID;
            if (text(m_db, u"SELECT type FROM books_accounts WHERE id = ?"_s, { income }) != "Income"_L1)
                return Outcome::refused(400, u"Choose an income account."_s);
            const qint64 amount = i.value(0).toLongLong();
            return insertEntry(i.value(1).toString(),
                u"Invoice %1 · %2"_s.arg(i.value(3).toString(), i.value(2).toString()),
                { { receivable, amount, 0 }, { income, 0, amount } }, kind, id);
        }
        if (kind == "payment"_L1) {
            QSqlQuery p = run(m_db,
                u"SELECT amount, date, client FROM payments WHERE id = ? AND status = 'Paid' AND method != 'refund'"_s,
                { id });
            if (!p.next())
                return Outcome::refused(404, u"That payment is not in Tarn."_s);
            const QString bank = text(m_db, u"SELECT id FROM books_accounts WHERE bank != 0 ORDER BY code LIMIT 1"_s);
            const qint64 amount = p.value(0).toLongLong();
            return insertEntry(p.value(1).toString().left(10), u"Payment from "_s + p.value(2).toString(),
                { { bank, amount, 0 }, { receivable, 0, amount } }, kind, id);
        }
        return Outcome::refused(400, u"Post an invoice or a payment."_s);
    });
}

void BooksLedger::insertDocument(const QString &id, const QString &kind, const QString &party, const QString &number,
    const QString &date, const QString &due, qint64 amount, const QString &appliesTo, const QString &entryID)
{
    run(m_db,
        u"INSERT INTO books_documents (id, kind, party, number, document_date, due_date, amount, applies_to, entry_id)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { id, kind, party, orNull(number), date, due, amount, orNull(appliesTo), entryID });
}

void BooksLedger::plantDemoWhenEmpty()
{
    if (single(m_db, u"SELECT COUNT(*) FROM books_accounts"_s) > 0)
        return;
    const QString bank = u"acct-1000"_s;
    const struct {
        const char *code;
        const char *name;
        const char *type;
        int bank;
    } accounts[] = {
        { "1000", "Operating checking", "Asset", 1 },
        { "1200", "Accounts receivable", "Asset", 0 },
        { "1500", "Workshop equipment", "Asset", 0 },
        { "2000", "Accounts payable", "Liability", 0 },
        { "3000", "Owner's equity", "Equity", 0 },
        { "4000", "Furniture sales", "Income", 0 },
        { "4100", "Design services", "Income", 0 },
        { "6000", "Rent", "Expense", 0 },
        { "6100", "Software", "Expense", 0 },
        { "6200", "Payroll", "Expense", 0 },
        { "6300", "Workshop supplies", "Expense", 0 },
        { "6400", "Bank fees", "Expense", 0 },
    };
    m_db.transaction();
    for (const auto &account : accounts) {
        const QString code = QString::fromLatin1(account.code);
        run(m_db, u"INSERT INTO books_accounts (id, code, name, type, bank) VALUES (?, ?, ?, ?, ?)"_s,
            { QString(u"acct-"_s + code), code, QString::fromLatin1(account.name), QString::fromLatin1(account.type),
                account.bank });
    }
    const auto entryOf = [](const Outcome &posted) { return posted.body.value("id"_L1).toString(); };
    const QDate today = QDate::currentDate();
    const QDate first = QDate(today.year(), today.month(), 1).addMonths(-11);
    const QString customers[] = { u"Brightwater Dental"_s, u"Oakline Studio"_s, u"Fernhill Bakery"_s,
        u"Marlow & Sons"_s, u"Tidewater Yoga"_s };
    // Bank rows come from the feed for the last three months.
    const QDate fedFrom = first.addMonths(9);
    const auto feed = [&](const QDate &day, const QString &description, qint64 amount, const QString &entryID) {
        if (day >= fedFrom && day <= today)
            insertBankRow(bank, day.toString(Qt::ISODate), description, amount, QString(), u"mercury"_s, 1, entryID);
    };
    const QString opened = first.toString(Qt::ISODate);
    insertEntry(opened, u"Opening balance"_s, { { bank, 6'000'000, 0 }, { u"acct-3000"_s, 0, 6'000'000 } });

    int invoiceNumber = 2101;
    int billNumber = 1;
    for (int month = 0; month < 12; ++month) {
        const QDate start = first.addMonths(month);
        // Three customer invoices a month, paid twelve days later when that day has come.
        for (int k = 0; k < 3; ++k, ++invoiceNumber) {
            const QDate day = start.addDays(2 + 7 * k);
            if (day > today)
                break;
            const QString customer = customers[(month + k) % 5];
            const qint64 amount = 650'000 + 95'000 * ((month * 3 + k * 5) % 7) + 1'250 * k;
            const QString income = k == 2 ? u"acct-4100"_s : QString(sales);
            const QString number = QString::number(invoiceNumber);
            const QString id = u"ci-"_s + number;
            const QString posted
                = entryOf(insertEntry(day.toString(Qt::ISODate), u"Invoice %1 · %2"_s.arg(number, customer),
                    { { receivable, amount, 0 }, { income, 0, amount } }, u"customer_invoice"_s, id));
            insertDocument(id, u"invoice"_s, customer, number, day.toString(Qt::ISODate),
                day.addDays(30).toString(Qt::ISODate), amount, {}, posted);
            const QDate paid = day.addDays(12);
            if (paid > today || (month == 10 && k == 1))
                continue;
            const QString receipt = entryOf(insertEntry(paid.toString(Qt::ISODate), u"Payment from "_s + customer,
                { { bank, amount, 0 }, { receivable, 0, amount } }, u"customer_receipt"_s, u"cr-"_s + number));
            insertDocument(u"cr-"_s + number, u"receipt"_s, customer, {}, paid.toString(Qt::ISODate),
                paid.toString(Qt::ISODate), amount, id, receipt);
            feed(paid, u"Deposit "_s + customer, amount, receipt);
        }
        // The month's bills, paid five days after they arrive.
        const struct {
            const char *vendor;
            const char *account;
            qint64 amount;
            int day;
        } bills[] = {
            { "Harbourside Properties", "acct-6000", 420'000, 0 },
            { "Ledgerline Software", "acct-6100", 6'400 + 500 * (month % 3), 3 },
            { "Northwood Timber", "acct-6300", 85'000 + 9'000 * (month % 4), 10 },
        };
        for (const auto &bill : bills) {
            const QDate day = start.addDays(bill.day);
            if (day > today)
                continue;
            const QString vendor = QString::fromLatin1(bill.vendor);
            const QString id = u"bill-%1"_s.arg(billNumber++);
            const QString posted = entryOf(insertEntry(day.toString(Qt::ISODate), vendor,
                { { QString::fromLatin1(bill.account), bill.amount, 0 }, { QString(payable), 0, bill.amount } },
                u"bill"_s, id));
            insertDocument(id, u"bill"_s, vendor, id.mid(5), day.toString(Qt::ISODate),
                day.addDays(15).toString(Qt::ISODate), bill.amount, {}, posted);
            const QDate paid = day.addDays(5);
            if (paid > today)
                continue;
            const QString payment = entryOf(insertEntry(paid.toString(Qt::ISODate), u"Paid "_s + vendor,
                { { QString(payable), bill.amount, 0 }, { bank, 0, bill.amount } }, u"bill_payment"_s, u"bp-"_s + id));
            insertDocument(u"bp-"_s + id, u"bill_payment"_s, vendor, {}, paid.toString(Qt::ISODate),
                paid.toString(Qt::ISODate), bill.amount, id, payment);
            feed(paid, u"Payment "_s + vendor, -bill.amount, payment);
        }
        const QDate payday = start.addDays(24);
        if (payday <= today) {
            const qint64 payroll = 1'240'000;
            const QString payrollEntry = entryOf(insertEntry(
                payday.toString(Qt::ISODate), u"Payroll"_s, { { u"acct-6200"_s, payroll, 0 }, { bank, 0, payroll } }));
            feed(payday, u"Payroll run"_s, -payroll, payrollEntry);
        }
    }
    // This month's rows the feed brought in that nobody has looked at yet.
    const QDate recent = today.addDays(-2) < QDate(today.year(), today.month(), 1) ? today : today.addDays(-2);
    feed(recent, u"Corner Café"_s, -1'840, {});
    feed(recent, u"Monthly service fee"_s, -2'500, {});
    feed(today, u"Card deposit"_s, 31'250, {});
    m_db.commit();
}
