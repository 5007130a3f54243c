#include "money/MoneyTestSession.h"
#include "money/TarnBankCSV.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnBooksRequests.h"

#include <QDate>
#include <QJsonArray>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using namespace TarnBooksCalls;

const QString bank = u"acct-1000"_s;

QString day(int fromToday)
{
    return QDate::currentDate().addDays(fromToday).toString(Qt::ISODate);
}

QPair<qint64, qint64> totalsOf(const TarnBooks &books)
{
    qint64 debits = 0;
    qint64 credits = 0;
    for (const TarnBooksAccount &account : books.accounts) {
        debits += account.debits;
        credits += account.credits;
    }
    return { debits, credits };
}

QJsonObject line(const QString &account, qint64 debit, qint64 credit)
{
    return { { u"account_id"_s, account }, { u"debit"_s, debit }, { u"credit"_s, credit } };
}

// One step of a reconciliation, and how the preview at the statement date
// moves because of it, worked out by hand.
struct Step {
    const char *name;
    std::function<void()> act;
    qint64 ledger = 0;
    qint64 outstanding = 0;
    qint64 imported = 0;
    qint64 unmatched = 0;
    qint64 future = 0;
};

} // namespace

// The books of the local workspace through the client's calls: a ledger that
// stays balanced whatever is done to it, statements imported once, hand-worked
// reconciliations, register pages and the link to the terminal's records.
class TestBooksLedger : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void demoYear();
    void sameStatementTwice();
    void ledgerStaysBalanced();
    void reconciliation();
    void registerPages();
    void reversalsAndVoids();
    void linkedActivity();
    void awkwardIdsReachTheirRoute();

private:
    TarnBooks books() { return tarnWaitFor(TarnBooksCalls::books(*session.api)); }
    MoneyTestSession session;
};

void TestBooksLedger::init()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
}

void TestBooksLedger::demoYear()
{
    const TarnBooks demo = books();
    QVERIFY(demo.entry_count > 100);
    const auto [debits, credits] = totalsOf(demo);
    QCOMPARE(debits, credits);
    QVERIFY(!demo.bank_rows.isEmpty() && !demo.bank_matched.value_or(QList<TarnBooksMatchedRow>()).isEmpty());
    const TarnBooksReport year = tarnWaitFor(booksReport(*session.api, day(-366), day(0)));
    QVERIFY(year.revenue > year.expenses && year.expenses > 0);
    QCOMPARE(year.net_income, year.revenue - year.expenses);
}

void TestBooksLedger::sameStatementTwice()
{
    // Two equal coffees on one day are two transactions, not a duplicate.
    const QList<TarnBankCSV::Row> rows
        = TarnBankCSV::parse(u"Date,Description,Amount,Reference\n"
                             "%1,Coffee,-4.50,\n%1,Coffee,-4.50,\n%1,Client deposit,1200.00,D-77\n"_s.arg(day(0)));
    QCOMPARE(rows.size(), 3);
    const TarnBooksImportResult first = tarnWaitFor(importBooksBankRows(*session.api, bank, rows));
    QCOMPARE(first, (TarnBooksImportResult { 3, 0 }));
    const TarnBooks before = books();

    const TarnBooksImportResult again = tarnWaitFor(importBooksBankRows(*session.api, bank, rows));
    QCOMPARE(again, (TarnBooksImportResult { 0, 3 }));
    QCOMPARE(books(), before);

    // A bad row anywhere stores nothing.
    QList<TarnBankCSV::Row> mixed = rows;
    mixed.append({ day(0), u"Fresh"_s, 100, {} });
    mixed.append({ u"2026-02-30"_s, u"Bad"_s, 100, {} });
    QCOMPARE(errorOf(importBooksBankRows(*session.api, bank, mixed)), u"Row 5 has an invalid date."_s);
    QCOMPARE(books(), before);
}

void TestBooksLedger::ledgerStaysBalanced()
{
    // A fixed seed: a failure replays the same sequence.
    QRandomGenerator random(20261124);
    TarnAPI &api = *session.api;
    for (int step = 0; step < 60; ++step) {
        const TarnBooks now = books();
        const QList<TarnBooksAccount> &accounts = now.accounts;
        const QString account = accounts.at(random.bounded(accounts.size())).id;
        const QString other = accounts.at(random.bounded(accounts.size())).id;
        const qint64 cents = 1 + random.bounded(500000);
        switch (random.bounded(6)) {
        case 0: {
            // Balanced, or off by a cent (refused).
            const qint64 off = random.bounded(2);
            const QJsonObject entry { { u"entry_date"_s, day(-random.bounded(300)) }, { u"memo"_s, u"Random"_s },
                { u"lines"_s, QJsonArray { line(account, cents, 0), line(other, 0, cents + off) } } };
            QCOMPARE(session.send("POST", u"api/accounting/entries"_s, entry).status, off ? 400 : 200);
            break;
        }
        case 1:
            if (!now.entries.isEmpty()) {
                const QString id = now.entries.at(random.bounded(now.entries.size())).id;
                const QString date = day(0);
                (void)errorOf(reverseBooksEntry(api, id, date));
            }
            break;
        case 2:
            if (!now.bank_rows.isEmpty()) {
                const QString row = now.bank_rows.at(random.bounded(now.bank_rows.size())).id;
                (void)errorOf(categorizeBooksBankRow(api, row, account));
            }
            break;
        case 3: {
            const QList<TarnBankCSV::Row> rows { { day(-random.bounded(20)), u"Random row"_s,
                cents * (random.bounded(2) ? 1 : -1), QString::number(step) } };
            (void)errorOf(importBooksBankRows(api, bank, rows));
            break;
        }
        case 4:
            if (!now.customer_invoices.isEmpty()) {
                const QString id = now.customer_invoices.at(random.bounded(now.customer_invoices.size())).id;
                const QString date = day(0);
                (void)errorOf(voidBooksInvoice(api, id, date));
            }
            break;
        default:
            if (const auto receipts = now.customer_receipts.value_or(QList<TarnBooksCustomerReceipt>());
                !receipts.isEmpty()) {
                const QString id = receipts.at(random.bounded(receipts.size())).id;
                const QString date = day(0);
                (void)errorOf(voidBooksCustomerReceipt(api, id, date));
            }
        }
        const auto [debits, credits] = totalsOf(books());
        QVERIFY2(debits == credits, qPrintable(u"step %1: %2 != %3"_s.arg(step).arg(debits).arg(credits)));
    }
}

void TestBooksLedger::reconciliation()
{
    TarnAPI &api = *session.api;
    // A statement ending ten days on, past everything the demo has.
    const QString date = day(10);
    const auto preview = [&] { return tarnWaitFor(booksReconciliation(api, bank, date)); };
    const auto rowNamed = [&](const QString &description) {
        const QList<TarnBooksBankRow> rows = books().bank_rows;
        const auto found = std::find_if(
            rows.begin(), rows.end(), [&](const TarnBooksBankRow &row) { return row.description == description; });
        return found == rows.end() ? QString() : found->id;
    };
    // The demo's unreviewed rows first, so that only the steps below remain.
    for (const TarnBooksBankRow &row : books().bank_rows)
        tarnWaitFor(categorizeBooksBankRow(api, row.id, u"acct-6400"_s));

    QString futureEntry;
    const QList<Step> steps {
        { "a deposit imported",
            [&] {
                (void)tarnWaitFor(importBooksBankRows(api, bank, { { date, u"Deposit"_s, 50000, {} } }));
            },
            0, 0, 1, 1, 0 },
        { "the deposit categorized",
            [&] { (void)tarnWaitFor(categorizeBooksBankRow(api, rowNamed(u"Deposit"_s), u"acct-4000"_s)); }, 50000, 0,
            0, -1, 0 },
        { "a cheque written, not yet cleared",
            [&] {
                const QJsonObject entry { { u"entry_date"_s, date }, { u"memo"_s, u"Cheque 1001"_s },
                    { u"lines"_s, QJsonArray { line(u"acct-6300"_s, 12000, 0), line(bank, 0, 12000) } } };
                QCOMPARE(session.send("POST", u"api/accounting/entries"_s, entry).status, 200);
            },
            -12000, -12000, 0, 0, 0 },
        { "a transfer the ledger dates after the statement",
            [&] {
                const QJsonObject entry { { u"entry_date"_s, day(12) }, { u"memo"_s, u"Transfer"_s },
                    { u"lines"_s, QJsonArray { line(bank, 7000, 0), line(u"acct-3000"_s, 0, 7000) } } };
                futureEntry = session.send("POST", u"api/accounting/entries"_s, entry).json().value("id"_L1).toString();
                (void)tarnWaitFor(importBooksBankRows(api, bank, { { date, u"Transfer in"_s, 7000, {} } }));
            },
            0, 0, 1, 1, 0 },
        { "the transfer matched",
            [&] { (void)tarnWaitFor(matchBooksBankRow(api, rowNamed(u"Transfer in"_s), futureEntry)); }, 0, 0, 0, -1,
            1 },
    };
    for (const Step &step : steps) {
        const TarnBooksReconciliation before = preview();
        step.act();
        const TarnBooksReconciliation after = preview();
        QCOMPARE(after.ledger_balance - before.ledger_balance, step.ledger);
        QCOMPARE(after.outstanding_total - before.outstanding_total, step.outstanding);
        QCOMPARE(after.adjusted_balance, after.ledger_balance - after.outstanding_total);
        QCOMPARE(after.imported_count - before.imported_count, step.imported);
        QCOMPARE(after.unmatched_count - before.unmatched_count, step.unmatched);
        QCOMPARE(after.future_match_count - before.future_match_count, step.future);
    }

    const TarnBooksReconciliation ready = preview();
    QCOMPARE(ready.unmatched_count, 0);
    QCOMPARE(errorOf(closeBooksReconciliation(api, bank, date, ready.adjusted_balance + 1)),
        u"The statement ending balance differs from the adjusted balance by $0.01."_s);
    const TarnBooksReconciliationClosed closed
        = tarnWaitFor(closeBooksReconciliation(api, bank, date, ready.adjusted_balance));
    QCOMPARE(closed.preview, ready);
    QCOMPARE(preview().last_closed_date, date);
    // Closed rows stay as they are, and nothing new lands in the closed period.
    const TarnBooks after = books();
    const QList<TarnBooksMatchedRow> matched = after.bank_matched.value_or(QList<TarnBooksMatchedRow>());
    const QString lockedRow = matched.first().id;
    QCOMPARE(errorOf(unmatchBooksBankRow(api, lockedRow)), u"That bank row is in a closed statement."_s);
    QCOMPARE(errorOf(importBooksBankRows(api, bank, { { day(9), u"Late"_s, 100, {} } })),
        u"Row 1 falls in the statement closed through %1."_s.arg(date));
}

void TestBooksLedger::registerPages()
{
    TarnAPI &api = *session.api;
    const QString start = day(-400);
    const QString end = day(0);
    const QString all;
    const TarnBooksRegister first = tarnWaitFor(booksRegister(api, start, end, all, 0));
    QVERIFY(first.total > 100);
    QCOMPARE(first.entries.size(), 100);
    // One account's register holds only entries through it.
    const QString rent = u"acct-6000"_s;
    const TarnBooksRegister rents = tarnWaitFor(booksRegister(api, start, end, rent, 0));
    QVERIFY(rents.total >= 11 && rents.total <= 12);
    for (const TarnBooksRegisterEntry &entry : rents.entries)
        QVERIFY(std::any_of(entry.lines.begin(), entry.lines.end(),
            [](const TarnBooksRegisterLine &l) { return l.code == "6000"_L1; }));
}

void TestBooksLedger::reversalsAndVoids()
{
    TarnAPI &api = *session.api;
    const TarnBooks demo = books();
    const QString entry = demo.entries.last().id;
    const QString date = day(0);
    const QString reversal = tarnWaitFor(reverseBooksEntry(api, entry, date)).id;
    QVERIFY(!reversal.isEmpty());
    QCOMPARE(errorOf(reverseBooksEntry(api, entry, date)), u"That entry was already reversed."_s);

    const QList<TarnBooksCustomerReceipt> receipts = demo.customer_receipts.value_or(QList<TarnBooksCustomerReceipt>());
    QVERIFY(!receipts.isEmpty());
    const TarnBooksCustomerReceipt receipt = receipts.first();
    const QString invoice = receipt.invoice_id.value_or(QString());
    QCOMPARE(errorOf(voidBooksInvoice(api, invoice, date)), u"Void its payments first."_s);
    (void)tarnWaitFor(voidBooksCustomerReceipt(api, receipt.id, date));
    const auto invoiceNamed = [&](const TarnBooks &state) {
        return *std::find_if(state.customer_invoices.begin(), state.customer_invoices.end(),
            [&](const TarnBooksCustomerInvoice &i) { return i.id == invoice; });
    };
    QCOMPARE(invoiceNamed(books()).remaining, invoiceNamed(books()).amount);
    (void)tarnWaitFor(voidBooksInvoice(api, invoice, date));
    QCOMPARE(invoiceNamed(books()).status, u"Voided"_s);
    QCOMPARE(errorOf(voidBooksInvoice(api, invoice, date)), u"That record is already void."_s);
}

void TestBooksLedger::linkedActivity()
{
    TarnAPI &api = *session.api;
    const std::optional<QString> income;
    QCOMPARE(errorOf(postBooksSource(api, u"invoice"_s, u"inv-1043"_s, income)),
        u"Link Tarn activity to this company first."_s);
    QVERIFY(!books().source_review);
    (void)tarnWaitFor(setBooksSourceLinked(api, true));
    const TarnBooksSourceReview review = books().source_review.value_or(TarnBooksSourceReview());
    QVERIFY(!review.invoices.isEmpty() && !review.payments.isEmpty());

    const TarnBooksSourceRecord invoice = review.invoices.first();
    const QString entry = tarnWaitFor(postBooksSource(api, u"invoice"_s, invoice.id, u"acct-4100"_s)).id;
    const TarnBooks after = books();
    QVERIFY(std::any_of(after.entries.begin(), after.entries.end(), [&](const TarnBooksEntry &e) {
        return e.id == entry && e.source_id == invoice.id && e.amount == invoice.amount;
    }));
    QCOMPARE(after.source_review->invoices.size(), review.invoices.size() - 1);
    QCOMPARE(
        errorOf(postBooksSource(api, u"invoice"_s, invoice.id, income)), u"That record is already in the books."_s);
}

void TestBooksLedger::awkwardIdsReachTheirRoute()
{
    // Escaped whole: the route itself answers, not the router's 404.
    const QString id = u"a/b?c&d=e+f#g h"_s;
    QCOMPARE(errorOf(unmatchBooksBankRow(*session.api, id)), u"That bank row is not in the books."_s);
    QCOMPARE(errorOf(voidBooksBillPayment(*session.api, id, day(0))), u"That record is not in the books."_s);
    // Only an invoice names the income account it is posted to.
    const TarnBooksSourcePost payment { u"payment"_s, u"p1"_s, u"acct-4000"_s };
    const TarnBooksSourcePost invoice { u"invoice"_s, u"i1"_s, u"acct-4000"_s };
    QVERIFY(!payment.toJSON().contains("income_account_id"_L1));
    QVERIFY(invoice.toJSON().contains("income_account_id"_L1));
}

QTEST_GUILESS_MAIN(TestBooksLedger)
#include "tst_books_ledger.moc"
