#include "money/TarnBooksBank.h"
#include "money/TarnBooksDocuments.h"
#include "money/TarnBooksLedger.h"
#include "money/TarnBooksPages.h"
#include "money/TarnBooksRegister.h"
#include "money/TarnPaymentRecords.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace TarnBooksPages;
using Direction = Transaction::Direction;

namespace {

TarnPayment payment(const QString &id, const QString &status, qint64 amount, const QString &date,
    std::optional<QString> invoice = std::nullopt)
{
    return { id, u"Client "_s + id, amount, status, date, {}, std::move(invoice), {}, {} };
}

TarnBooksBankRow bankRow(const QString &id, const QString &date, qint64 amount, const QString &source)
{
    return { id, u"bank-1"_s, date, u"Row "_s + id, amount, source, std::nullopt };
}

TarnBooksAccount account(const QString &code, const QString &type)
{
    return { u"acc-"_s + code, code, u"Account "_s + code, type, 0, 0, 0 };
}

QStringList ids(const QList<Transaction> &list)
{
    QStringList out;
    for (const Transaction &t : list)
        out.append(t.id);
    return out;
}

struct SummaryRow {
    const char *name;
    QList<TarnBooksReport> reports;
    QList<TarnPayment> payments;
    MonthSummary summary;
};

struct FilterRow {
    const char *name;
    QString query;
    std::optional<Source> source;
    QStringList kept;
};

struct BalanceRow {
    const char *name;
    QString type;
    qint64 debits;
    qint64 credits;
    qint64 balance;
};

struct PostingRow {
    const char *name;
    TarnBooksLineDraft draft;
    std::optional<TarnBooksLinePosting> posting;
};

} // namespace

class TestBooksPages : public QObject {
    Q_OBJECT

private slots:
    // Keys oldest first, across a year end; the last day of "YYYY-MM" and of
    // nothing else.
    void monthKeys()
    {
        QCOMPARE(
            months(QDate(2024, 2, 29), 4), (QStringList { u"2023-11"_s, u"2023-12"_s, u"2024-01"_s, u"2024-02"_s }));
        QVERIFY(months(QDate(), 3).isEmpty());
        QCOMPARE(monthEnd(u"2024-02"_s), std::optional(u"2024-02-29"_s));
        for (const QString &bad : { u"2024-13"_s, u"2024-00"_s, u"2024-1"_s, u"0000-01"_s, u"abcd-01"_s })
            QVERIFY2(!monthEnd(bad), qPrintable(bad));
    }

    // Where a month's figures come from when the books, the payments, both or
    // neither have them: the books win, and payments never add to them.
    void summaries_data()
    {
        QTest::addColumn<SummaryRow>("row");
        const QString m = u"2024-03"_s;
        const QList<TarnPayment> paidInMarch { payment(u"a"_s, u"Paid"_s, 700, u"2024-03-04"_s),
            payment(u"b"_s, u"Paid"_s, 300, u"2024-03-30"_s), payment(u"c"_s, u"Pending"_s, 5000, u"2024-03-05"_s) };
        const SummaryRow rows[] = {
            { "books win over payments", { { u"2024-03-01"_s, {}, 9000, 4000 } }, paidInMarch,
                { m, 9000, 4000, Source::books, Source::books } },
            { "payments stand in for missing books income", { { u"2024-03-01"_s, {}, 0, 4000 } }, paidInMarch,
                { m, 1000, 4000, Source::payments, Source::books } },
            { "payments alone", {}, paidInMarch, { m, 1000, 0, Source::payments, Source::none } },
            { "books with nothing booked", { { u"2024-03-01"_s, {}, 0, 0 } }, {},
                { m, 0, 0, Source::books, Source::books } },
            { "another month's report and payments", { { u"2024-02-01"_s, {}, 9000, 4000 } },
                { payment(u"a"_s, u"Paid"_s, 700, u"2024-02-04"_s) }, { m, 0, 0, Source::none, Source::none } },
            { "negative books income is still books", { { u"2024-03-01"_s, {}, -500, 0 } }, paidInMarch,
                { m, -500, 0, Source::books, Source::books } },
        };
        for (const SummaryRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void summaries()
    {
        QFETCH(SummaryRow, row);
        QCOMPARE(TarnBooksPages::summaries({ u"2024-03"_s }, row.reports, row.payments),
            QList<MonthSummary> { row.summary });
    }

    void mercurySummariesAndTotal()
    {
        const QList<TarnBooksBankRow> rows {
            bankRow(u"1"_s, u"2024-02-03"_s, 10000, u"mercury"_s),
            bankRow(u"2"_s, u"2024-02-10"_s, -2500, u"Mercury"_s),
            bankRow(u"3"_s, u"2024-02-11"_s, -500, u"mercury"_s),
            bankRow(u"4"_s, u"2024-02-12"_s, -99999, u"csv"_s),
            bankRow(u"5"_s, u"2024-03-01"_s, 100, u"csv"_s),
        };
        const QList<MonthSummary> got = mercurySummaries({ u"2024-01"_s, u"2024-02"_s, u"2024-03"_s }, rows);
        const QList<MonthSummary> expected {
            { u"2024-01"_s, 0, 0, Source::none, Source::none },
            { u"2024-02"_s, 10000, 3000, Source::mercury, Source::mercury },
            { u"2024-03"_s, 0, 0, Source::none, Source::none },
        };
        QCOMPARE(got, expected);
        QCOMPARE(total(got), (Totals { 10000, 3000 }));
    }

    void chartBars()
    {
        const QList<MonthSummary> summaries {
            { u"2023-12"_s, 500, 200, Source::books, Source::books },
            { u"2024-13"_s, 1, 2, Source::none, Source::none },
        };
        const QList<ChartBar> expected {
            { u"2023-12"_s, u"Dec"_s, u"Money in"_s, 500 },
            { u"2023-12"_s, u"Dec"_s, u"Money out"_s, 200 },
            { u"2024-13"_s, u"2024-13"_s, u"Money in"_s, 1 },
            { u"2024-13"_s, u"2024-13"_s, u"Money out"_s, 2 },
        };
        QCOMPARE(TarnBooksPages::chartBars(summaries), expected);
    }

    // A payment the books hold is listed once, as the books entry; the rest
    // newest first, books before payments on the same day.
    void transactionsMergeSources()
    {
        const QList<TarnBooksEntry> entries {
            { u"e1"_s, u"2024-03-02"_s, u"Card payment from Acme"_s, u"payment"_s, u"p1"_s, 5000 },
            { u"e2"_s, u"2024-03-05"_s, u"Rent"_s, u"bill_payment"_s, u"bp1"_s, 120000 },
            { u"e3"_s, u"2024-03-05"_s, QString(), std::nullopt, std::nullopt, 300 },
        };
        TarnPayment refund = payment(u"refund-p2"_s, u"Paid"_s, -700, u"2024-03-06T10:00:00Z"_s);
        refund.method = u"card"_s;
        const QList<TarnPayment> payments {
            payment(u"p1"_s, u"Paid"_s, 5000, u"2024-03-02"_s),
            payment(u"p2"_s, u"Paid"_s, 700, u"2024-03-05"_s),
            refund,
        };
        const QList<Transaction> expected {
            { u"refund-p2"_s, u"2024-03-06"_s, u"Client refund-p2"_s, u"card"_s, -700, Direction::moneyOut,
                Source::payments, u"Paid"_s },
            { u"e2"_s, u"2024-03-05"_s, u"Rent"_s, u"Bill payment"_s, -120000, Direction::moneyOut, Source::books,
                u"Posted"_s },
            { u"e3"_s, u"2024-03-05"_s, u"Manual entry"_s, u"Manual entry"_s, 300, Direction::journal, Source::books,
                u"Posted"_s },
            { u"p2"_s, u"2024-03-05"_s, u"Client p2"_s, u"Payment"_s, 700, Direction::moneyIn, Source::payments,
                u"Paid"_s },
            { u"e1"_s, u"2024-03-02"_s, u"Card payment from Acme"_s, u"Payment"_s, 5000, Direction::moneyIn,
                Source::books, u"Posted"_s },
        };
        QCOMPARE(transactions(entries, payments), expected);
        QCOMPARE(
            ids(mercuryTransactions({ bankRow(u"m1"_s, u"2024-01-01"_s, -5, u"mercury"_s),
                bankRow(u"c1"_s, u"2024-01-02"_s, 5, u"csv"_s), bankRow(u"m2"_s, u"2024-01-03"_s, 5, u"mercury"_s) })),
            (QStringList { u"m2"_s, u"m1"_s }));
        TarnBooksBankRow waiting = bankRow(u"m3"_s, u"2024-01-04"_s, 5, u"mercury"_s);
        waiting.mercury_status = u"uncategorized"_s;
        QCOMPARE(mercuryTransactions({ waiting }).constFirst().status, u"To categorize"_s);
    }

    void filter_data()
    {
        QTest::addColumn<FilterRow>("row");
        const std::optional<Source> any;
        const FilterRow rows[] = {
            { "title, any case, trimmed", u"  OFFICE "_s, any, { u"t1"_s } },
            { "detail", u"bill pay"_s, any, { u"t2"_s } },
            { "date", u"2024-02"_s, any, { u"t3"_s } },
            { "status", u"pending"_s, any, { u"t3"_s } },
            { "source and query", u"office"_s, Source::payments, {} },
        };
        for (const FilterRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void filter()
    {
        QFETCH(FilterRow, row);
        const QList<Transaction> all {
            { u"t1"_s, u"2024-03-01"_s, u"Office Supplies"_s, u"Expense"_s, -100, Direction::moneyOut, Source::books,
                u"Posted"_s },
            { u"t2"_s, u"2024-03-02"_s, u"Rent"_s, u"Bill payment"_s, -200, Direction::moneyOut, Source::books,
                u"Posted"_s },
            { u"t3"_s, u"2024-02-03"_s, u"Acme"_s, u"card"_s, 300, Direction::moneyIn, Source::payments, u"Pending"_s },
        };
        QCOMPARE(ids(TarnBooksPages::filter(all, row.query, row.source)), row.kept);
    }

    // Books invoices, the workspace's open ones the books lack (same number),
    // then invoices paid in the terminal; open ones first, soonest due first.
    void invoicesMergeSources()
    {
        const QList<TarnBooksCustomerInvoice> books {
            { u"b1"_s, u"Acme"_s, u"INV-1"_s, u"2024-03-20"_s, 10000, 4000, u"Partly paid"_s },
            { u"b2"_s, u"Beta"_s, std::nullopt, u"2024-02-01"_s, 5000, 0, u"Paid"_s },
            { u"b3"_s, u"Gamma"_s, u"INV-3"_s, u"2024-03-01"_s, 7000, 7000, u"Voided"_s },
        };
        const QList<TarnOpenInvoice> open {
            { u"w1"_s, u"c1"_s, u"Acme"_s, u" INV-1 "_s, u"2024-03-20"_s, 10000, 4000 },
            { u"w2"_s, u"c2"_s, u"Delta"_s, u"INV-9"_s, u"2024-03-10"_s, 2000, 2000 },
        };
        const QList<TarnPayment> payments {
            payment(u"p1"_s, u"Paid"_s, 1500, u"2024-01-10"_s, u"w5"_s),
            payment(u"p2"_s, u"Paid"_s, 500, u"2024-01-20"_s, u"w5"_s),
            payment(u"p3"_s, u"Paid"_s, 800, u"2024-01-25"_s, u"w2"_s),
            payment(u"p4"_s, u"Pending"_s, 900, u"2024-01-26"_s, u"w6"_s),
            payment(u"p5"_s, u"Paid"_s, 900, u"2024-01-27"_s, u"b2"_s),
            payment(u"p6"_s, u"Paid"_s, 900, u"2024-01-28"_s),
        };
        const QList<InvoiceRow> expected {
            { u"w2"_s, u"Invoice INV-9"_s, u"Delta"_s, u"2024-03-10"_s, 2000, 2000, true, u"Open"_s, Source::payments },
            { u"b1"_s, u"Invoice INV-1"_s, u"Acme"_s, u"2024-03-20"_s, 10000, 4000, true, u"Partly paid"_s,
                Source::books },
            { u"b3"_s, u"Invoice INV-3"_s, u"Gamma"_s, u"2024-03-01"_s, 7000, 7000, false, u"Voided"_s, Source::books },
            { u"b2"_s, u"Invoice"_s, u"Beta"_s, u"2024-02-01"_s, 5000, 0, false, u"Paid"_s, Source::books },
            { u"w5"_s, u"Invoice"_s, u"Client p1"_s, u"2024-01-20"_s, 2000, 0, false, u"Paid"_s, Source::payments },
        };
        QCOMPARE(invoices(open, payments, books), expected);
    }

    // Bills not voided with money still owed.
    void unpaidBills()
    {
        const auto bill = [](const QString &status, qint64 remaining) {
            return TarnBooksBill { u"b"_s, u"Vendor"_s, std::nullopt, u"2024-03-01"_s, 10000, remaining, status };
        };
        QCOMPARE(TarnBooksPages::unpaidBills({ bill(u"Open"_s, 10000), bill(u"Partly paid"_s, 2500),
                     bill(u"Voided"_s, 10000), bill(u"Paid"_s, 0), bill(u"Open"_s, -300) }),
            (UnpaidBills { 2, 12500 }));
    }

    // One row per expense line, debit minus credit (a reversal shows negative),
    // newest first; by account, largest spend first.
    void expensesAndAccounts()
    {
        const auto line = [](const QString &name, const QString &type, qint64 debit, qint64 credit) {
            return TarnBooksRegisterLine { {}, u"5000"_s, name, type, debit, credit };
        };
        const QList<TarnBooksRegisterEntry> entries {
            { u"r1"_s, u"2024-03-01"_s, u"Paper"_s, std::nullopt, std::nullopt, 1500,
                { line(u"Cash"_s, u"Asset"_s, 0, 1500), line(u"Office"_s, u"Expense"_s, 1500, 0) } },
            { u"r2"_s, u"2024-03-04"_s, u"Team lunch"_s, std::nullopt, std::nullopt, 9000,
                { line(u"Meals"_s, u"Expense"_s, 6000, 0), line(u"Office"_s, u"Expense"_s, 3000, 0),
                    line(u"Cash"_s, u"Asset"_s, 0, 9000) } },
            { u"r3"_s, u"2024-03-06"_s, u"Reverse paper"_s, std::nullopt, u"r1"_s, 1500,
                { line(u"Office"_s, u"Expense"_s, 0, 1500), line(u"Cash"_s, u"Asset"_s, 1500, 0) } },
            { u"r4"_s, u"2024-03-07"_s, u"Zero line"_s, std::nullopt, std::nullopt, 0,
                { line(u"Office"_s, u"Expense"_s, 100, 100) } },
        };
        const QList<ExpenseRow> rows = expenses(entries);
        const QList<ExpenseRow> expectedRows {
            { u"r3/0"_s, u"2024-03-06"_s, u"Reverse paper"_s, u"Office"_s, -1500 },
            { u"r2/0"_s, u"2024-03-04"_s, u"Team lunch"_s, u"Meals"_s, 6000 },
            { u"r2/1"_s, u"2024-03-04"_s, u"Team lunch"_s, u"Office"_s, 3000 },
            { u"r1/1"_s, u"2024-03-01"_s, u"Paper"_s, u"Office"_s, 1500 },
        };
        QCOMPARE(rows, expectedRows);
        QCOMPARE(expensesByAccount(rows), (QList<Group> { { u"Meals"_s, 1, 6000 }, { u"Office"_s, 3, 3000 } }));
    }

    void groups()
    {
        const auto posted = [](std::optional<QString> type, qint64 amount) {
            return TarnBooksEntry { {}, {}, {}, std::move(type), {}, amount };
        };
        QCOMPARE(entryGroups({ posted(u"payment"_s, 100), posted(std::nullopt, 50), posted(u"payment"_s, 200),
                     posted(u"payroll_run"_s, 7), posted(u""_s, 5) }),
            (QList<Group> { { u"Manual entries"_s, 2, 55 }, { u"Payments"_s, 2, 300 }, { u"Payroll run"_s, 1, 7 } }));
        QCOMPARE(mercuryGroups({ { u"Software"_s, -3000 }, { u""_s, 100 }, { u" Software "_s, -1000 },
                     { u"Sales"_s, 3500 }, { u"Rent"_s, -3500 }, { u"  "_s, -50 } }),
            (QList<Group> { { u"Software"_s, 2, -4000 }, { u"Rent"_s, 1, -3500 }, { u"Sales"_s, 1, 3500 },
                { u"Uncategorized"_s, 2, 50 } }));
    }

    // Balance-sheet then income-statement order, other types by title; codes
    // in number order.
    void chartOfAccounts()
    {
        const QList<TarnBooksAccount> accounts { account(u"5100"_s, u"Expense"_s), account(u"1000"_s, u"Asset"_s),
            account(u"900"_s, u"Asset"_s), account(u"4000"_s, u"Income"_s), account(u"X1"_s, u"Memo"_s),
            account(u"3000"_s, u"Equity"_s), account(u"2000"_s, u"Liability"_s), account(u"A1"_s, u"Clearing"_s),
            account(u"5000"_s, u"Expense"_s), account(u"1500"_s, u"asset"_s), account(u"0100"_s, u"Asset"_s) };
        QStringList shape;
        for (const AccountGroup &group : TarnBooksPages::chartOfAccounts(accounts)) {
            QStringList codes;
            for (const TarnBooksAccount &a : group.accounts)
                codes.append(a.code);
            shape.append(group.title + u": "_s + codes.join(u' '));
        }
        QCOMPARE(shape,
            (QStringList { u"Assets: 0100 900 1000"_s, u"Liabilities: 2000"_s, u"Equity: 3000"_s, u"Income: 4000"_s,
                u"Expenses: 5000 5100"_s, u"Clearing accounts: A1"_s, u"Memo accounts: X1"_s,
                u"asset accounts: 1500"_s }));
    }

    // Credit-normal accounts read credits less debits, so a balance against
    // the account's nature shows negative whatever its type.
    void naturalBalance_data()
    {
        QTest::addColumn<BalanceRow>("row");
        const BalanceRow rows[] = {
            { "asset", u"Asset"_s, 500000, 120000, 380000 },
            { "expense", u"Expense"_s, 90000, 10000, 80000 },
            { "liability", u"Liability"_s, 20000, 75000, 55000 },
            { "equity", u"Equity"_s, 0, 1000000, 1000000 },
            { "income", u"Income"_s, 15000, 2415000, 2400000 },
            { "overdrawn bank", u"Asset"_s, 1000, 6000, -5000 },
            { "income refunded beyond sales", u"Income"_s, 8000, 3000, -5000 },
            { "unknown type reads as debits", u"Memo"_s, 7000, 2000, 5000 },
        };
        for (const BalanceRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void naturalBalance()
    {
        QFETCH(BalanceRow, row);
        const TarnBooksAccount held { u"acc-1"_s, u"1"_s, u"One"_s, row.type, row.debits, row.credits, 0 };
        QCOMPARE(TarnBooksPages::naturalBalance(held), row.balance);
    }

    void mercuryNote()
    {
        QCOMPARE(TarnBooksPages::mercuryNote(1, 0), u"1 account \u00B7 All categorized"_s);
        QCOMPARE(TarnBooksPages::mercuryNote(2, 3), u"2 accounts \u00B7 3 to categorize in Mercury"_s);
        QCOMPARE(TarnBooksPages::mercuryNote(1, -4), u"1 account \u00B7 All categorized"_s);
    }

    // Quantity in ten-thousandths times cents, rounded half up to a cent, and
    // refused rather than wrapped.
    void linePosting_data()
    {
        QTest::addColumn<PostingRow>("row");
        const auto draft = [](const QString &quantity, const QString &price) {
            return TarnBooksLineDraft { u"l1"_s, u" Design work "_s, quantity, price, u"acc-4000"_s };
        };
        const auto posted = [](const QString &quantity, qint64 price, qint64 amount) {
            return TarnBooksLinePosting { u"Design work"_s, quantity, price, u"acc-4000"_s, amount };
        };
        const PostingRow rows[] = {
            { "fractional hours", draft(u"1.5"_s, u"$95"_s), posted(u"1.5"_s, 9500, 14250) },
            { "half a cent rounds up", draft(u"0.5"_s, u"0.01"_s), posted(u"0.5"_s, 1, 1) },
            { "below half a cent rounds down", draft(u"0.4999"_s, u"0.01"_s), posted(u"0.4999"_s, 1, 0) },
            { "free item", draft(u"2"_s, u"0"_s), posted(u"2"_s, 0, 0) },
            { "six whole digits", draft(u"999999"_s, u"9999.99"_s), posted(u"999999"_s, 999999, 999998000001) },
            { "line beyond 64-bit cents", draft(u"999999.9999"_s, u"9999999999.99"_s), std::nullopt },
            { "zero quantity", draft(u"0"_s, u"10"_s), std::nullopt },
            { "negative quantity", draft(u"-1"_s, u"10"_s), std::nullopt },
            { "five decimals", draft(u"1.00001"_s, u"10"_s), std::nullopt },
            { "seven whole digits", draft(u"1000000"_s, u"10"_s), std::nullopt },
            { "bad price", draft(u"1"_s, u"ten"_s), std::nullopt },
            { "no description", { u"l1"_s, u"  "_s, u"1"_s, u"1"_s, u"acc"_s }, std::nullopt },
            { "no account", { u"l1"_s, u"Work"_s, u"1"_s, u"1"_s, QString() }, std::nullopt },
        };
        for (const PostingRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void linePosting()
    {
        QFETCH(PostingRow, row);
        QCOMPARE(row.draft.posting(), row.posting);
    }
};

QTEST_APPLESS_MAIN(TestBooksPages)
#include "tst_books_pages.moc"
