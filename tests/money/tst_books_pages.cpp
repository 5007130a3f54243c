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

Q_DECLARE_METATYPE(std::optional<QString>)
Q_DECLARE_METATYPE(QList<TarnBooksPages::MonthSummary>)
Q_DECLARE_METATYPE(std::optional<TarnBooksPages::Source>)
Q_DECLARE_METATYPE(QList<TarnBooksBill>)
Q_DECLARE_METATYPE(TarnBooksPages::UnpaidBills)
Q_DECLARE_METATYPE(std::optional<TarnBooksLinePosting>)
Q_DECLARE_METATYPE(TarnBooksLineDraft)
Q_DECLARE_METATYPE(QList<TarnBooksReport>)
Q_DECLARE_METATYPE(QList<TarnPayment>)

namespace {

TarnPayment payment(const QString &id, const QString &status, qint64 amount, const QString &date,
                    std::optional<QString> invoice = std::nullopt)
{
    TarnPayment p;
    p.id = id;
    p.client = u"Client "_s + id;
    p.amount = amount;
    p.status = status;
    p.date = date;
    p.invoice_id = std::move(invoice);
    return p;
}

TarnBooksReport report(const QString &month, qint64 revenue, qint64 expenses)
{
    return {month + u"-01"_s, *monthEnd(month), revenue, expenses, revenue - expenses};
}

TarnBooksEntry entry(const QString &id, const QString &date, const QString &memo, std::optional<QString> type,
                     std::optional<QString> sourceID, qint64 amount)
{
    return {id, date, memo, std::move(type), std::move(sourceID), amount};
}

TarnBooksBankRow bankRow(const QString &id, const QString &date, qint64 amount, const QString &source)
{
    return {id, u"bank-1"_s, date, u"Row "_s + id, amount, source, std::nullopt};
}

TarnBooksAccount account(const QString &code, const QString &name, const QString &type)
{
    return {u"acc-"_s + code, code, name, type, 0, 0, 0};
}

QStringList ids(const QList<Transaction> &list)
{
    QStringList out;
    for (const Transaction &t : list)
        out.append(t.id);
    return out;
}

} // namespace

class TestBooksPages : public QObject
{
    Q_OBJECT

private slots:
    void months_data();
    void months();
    void monthEnd_data();
    void monthEnd();
    void summaries_data();
    void summaries();
    void mercurySummariesAndTotal();
    void chartBars();
    void transactionsMergeSources();
    void filter_data();
    void filter();
    void invoicesMergeSources();
    void unpaidBills_data();
    void unpaidBills();
    void expensesAndAccounts();
    void groups();
    void chartOfAccounts();
    void mercuryNote_data();
    void mercuryNote();
    void linePosting_data();
    void linePosting();
};

void TestBooksPages::months_data()
{
    QTest::addColumn<QDate>("endingAt");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("keys");

    QTest::addRow("within a year") << QDate(2024, 3, 15) << 3 << QStringList{u"2024-01"_s, u"2024-02"_s, u"2024-03"_s};
    QTest::addRow("across a year end") << QDate(2024, 2, 29) << 4
                                       << QStringList{u"2023-11"_s, u"2023-12"_s, u"2024-01"_s, u"2024-02"_s};
    QTest::addRow("one") << QDate(2024, 12, 31) << 1 << QStringList{u"2024-12"_s};
    QTest::addRow("two year ends")
        << QDate(2024, 1, 1) << 14
        << QStringList{u"2022-12"_s, u"2023-01"_s, u"2023-02"_s, u"2023-03"_s, u"2023-04"_s, u"2023-05"_s, u"2023-06"_s,
                       u"2023-07"_s, u"2023-08"_s, u"2023-09"_s, u"2023-10"_s, u"2023-11"_s, u"2023-12"_s, u"2024-01"_s};
    QTest::addRow("none") << QDate(2024, 3, 1) << 0 << QStringList{};
    QTest::addRow("negative") << QDate(2024, 3, 1) << -2 << QStringList{};
    QTest::addRow("invalid date") << QDate() << 3 << QStringList{};
}

void TestBooksPages::months()
{
    QFETCH(QDate, endingAt);
    QFETCH(int, count);
    QFETCH(QStringList, keys);
    QCOMPARE(TarnBooksPages::months(endingAt, count), keys);
}

void TestBooksPages::monthEnd_data()
{
    QTest::addColumn<QString>("month");
    QTest::addColumn<std::optional<QString>>("end");

    QTest::addRow("leap February") << u"2024-02"_s << std::optional(u"2024-02-29"_s);
    QTest::addRow("common February") << u"2023-02"_s << std::optional(u"2023-02-28"_s);
    QTest::addRow("century February") << u"1900-02"_s << std::optional(u"1900-02-28"_s);
    QTest::addRow("fourth century February") << u"2000-02"_s << std::optional(u"2000-02-29"_s);
    QTest::addRow("thirty days") << u"2024-04"_s << std::optional(u"2024-04-30"_s);
    QTest::addRow("December") << u"2024-12"_s << std::optional(u"2024-12-31"_s);
    QTest::addRow("month 13") << u"2024-13"_s << std::optional<QString>();
    QTest::addRow("month 0") << u"2024-00"_s << std::optional<QString>();
    QTest::addRow("unpadded") << u"2024-1"_s << std::optional<QString>();
    QTest::addRow("a day") << u"2024-02-01"_s << std::optional<QString>();
    QTest::addRow("year zero") << u"0000-01"_s << std::optional<QString>();
    QTest::addRow("letters") << u"abcd-01"_s << std::optional<QString>();
}

void TestBooksPages::monthEnd()
{
    QFETCH(QString, month);
    QFETCH(std::optional<QString>, end);
    QCOMPARE(TarnBooksPages::monthEnd(month), end);
}

// Where each month's figures come from when the books, the payments, both or
// neither have them.
void TestBooksPages::summaries_data()
{
    QTest::addColumn<QList<TarnBooksReport>>("reports");
    QTest::addColumn<QList<TarnPayment>>("payments");
    QTest::addColumn<QList<MonthSummary>>("expected");

    const QString m = u"2024-03"_s;
    const QList<TarnPayment> paidInMarch{payment(u"a"_s, u"Paid"_s, 700, u"2024-03-04"_s),
                                         payment(u"b"_s, u"Paid"_s, 300, u"2024-03-30"_s),
                                         payment(u"c"_s, u"Pending"_s, 5000, u"2024-03-05"_s)};
    QTest::addRow("books win over payments")
        << QList<TarnBooksReport>{report(m, 9000, 4000)} << paidInMarch
        << QList<MonthSummary>{{m, 9000, 4000, Source::books, Source::books}};
    QTest::addRow("payments stand in for missing books income")
        << QList<TarnBooksReport>{report(m, 0, 4000)} << paidInMarch
        << QList<MonthSummary>{{m, 1000, 4000, Source::payments, Source::books}};
    QTest::addRow("payments alone") << QList<TarnBooksReport>{} << paidInMarch
                                    << QList<MonthSummary>{{m, 1000, 0, Source::payments, Source::none}};
    QTest::addRow("books with nothing booked") << QList<TarnBooksReport>{report(m, 0, 0)} << QList<TarnPayment>{}
                                               << QList<MonthSummary>{{m, 0, 0, Source::books, Source::books}};
    QTest::addRow("nothing at all") << QList<TarnBooksReport>{} << QList<TarnPayment>{}
                                    << QList<MonthSummary>{{m, 0, 0, Source::none, Source::none}};
    QTest::addRow("another month's report and payments")
        << QList<TarnBooksReport>{report(u"2024-02"_s, 9000, 4000)}
        << QList<TarnPayment>{payment(u"a"_s, u"Paid"_s, 700, u"2024-02-04"_s)}
        << QList<MonthSummary>{{m, 0, 0, Source::none, Source::none}};
    QTest::addRow("negative books income is still books")
        << QList<TarnBooksReport>{report(m, -500, 0)} << paidInMarch
        << QList<MonthSummary>{{m, -500, 0, Source::books, Source::books}};
}

void TestBooksPages::summaries()
{
    QFETCH(QList<TarnBooksReport>, reports);
    QFETCH(QList<TarnPayment>, payments);
    QFETCH(QList<MonthSummary>, expected);
    QCOMPARE(TarnBooksPages::summaries({u"2024-03"_s}, reports, payments), expected);
}

void TestBooksPages::mercurySummariesAndTotal()
{
    const QList<TarnBooksBankRow> rows{
        bankRow(u"1"_s, u"2024-02-03"_s, 10000, u"mercury"_s),
        bankRow(u"2"_s, u"2024-02-10"_s, -2500, u"Mercury"_s),
        bankRow(u"3"_s, u"2024-02-11"_s, -500, u"mercury"_s),
        bankRow(u"4"_s, u"2024-02-12"_s, -99999, u"csv"_s),
        bankRow(u"5"_s, u"2024-03-01"_s, 100, u"csv"_s),
    };
    const QList<MonthSummary> got = mercurySummaries({u"2024-01"_s, u"2024-02"_s, u"2024-03"_s}, rows);
    const QList<MonthSummary> expected{
        {u"2024-01"_s, 0, 0, Source::none, Source::none},
        {u"2024-02"_s, 10000, 3000, Source::mercury, Source::mercury},
        {u"2024-03"_s, 0, 0, Source::none, Source::none},
    };
    QCOMPARE(got, expected);
    QCOMPARE(total(got), (Totals{10000, 3000}));
    QCOMPARE(total({}), (Totals{0, 0}));
}

void TestBooksPages::chartBars()
{
    const QList<MonthSummary> summaries{
        {u"2023-12"_s, 500, 200, Source::books, Source::books},
        {u"2024-01"_s, 0, 900, Source::none, Source::books},
        {u"2024-13"_s, 1, 2, Source::none, Source::none},
    };
    const QList<ChartBar> expected{
        {u"2023-12"_s, u"Dec"_s, u"Money in"_s, 500},  {u"2023-12"_s, u"Dec"_s, u"Money out"_s, 200},
        {u"2024-01"_s, u"Jan"_s, u"Money in"_s, 0},    {u"2024-01"_s, u"Jan"_s, u"Money out"_s, 900},
        {u"2024-13"_s, u"2024-13"_s, u"Money in"_s, 1}, {u"2024-13"_s, u"2024-13"_s, u"Money out"_s, 2},
    };
    QCOMPARE(TarnBooksPages::chartBars(summaries), expected);
}

void TestBooksPages::transactionsMergeSources()
{
    const QList<TarnBooksEntry> entries{
        entry(u"e1"_s, u"2024-03-02"_s, u"Card payment from Acme"_s, u"payment"_s, u"p1"_s, 5000),
        entry(u"e2"_s, u"2024-03-05"_s, u"Rent"_s, u"bill_payment"_s, u"bp1"_s, 120000),
        entry(u"e3"_s, u"2024-03-05"_s, QString(), std::nullopt, std::nullopt, 300),
    };
    TarnPayment refund = payment(u"refund-p2"_s, u"Paid"_s, -700, u"2024-03-06T10:00:00Z"_s);
    refund.method = u"card"_s;
    const QList<TarnPayment> payments{
        payment(u"p1"_s, u"Paid"_s, 5000, u"2024-03-02"_s),
        payment(u"p2"_s, u"Paid"_s, 700, u"2024-03-05"_s),
        refund,
    };
    const QList<Transaction> expected{
        {u"refund-p2"_s, u"2024-03-06"_s, u"Client refund-p2"_s, u"card"_s, -700, Direction::moneyOut, Source::payments,
         u"Paid"_s},
        {u"e2"_s, u"2024-03-05"_s, u"Rent"_s, u"Bill payment"_s, -120000, Direction::moneyOut, Source::books, u"Posted"_s},
        {u"e3"_s, u"2024-03-05"_s, u"Manual entry"_s, u"Manual entry"_s, 300, Direction::journal, Source::books,
         u"Posted"_s},
        {u"p2"_s, u"2024-03-05"_s, u"Client p2"_s, u"Payment"_s, 700, Direction::moneyIn, Source::payments, u"Paid"_s},
        {u"e1"_s, u"2024-03-02"_s, u"Card payment from Acme"_s, u"Payment"_s, 5000, Direction::moneyIn, Source::books,
         u"Posted"_s},
    };
    QCOMPARE(transactions(entries, payments), expected);
    QCOMPARE(ids(mercuryTransactions({bankRow(u"m1"_s, u"2024-01-01"_s, -5, u"mercury"_s),
                                      bankRow(u"c1"_s, u"2024-01-02"_s, 5, u"csv"_s),
                                      bankRow(u"m2"_s, u"2024-01-03"_s, 5, u"mercury"_s)})),
             (QStringList{u"m2"_s, u"m1"_s}));
}

void TestBooksPages::filter_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<std::optional<Source>>("source");
    QTest::addColumn<QStringList>("kept");

    const std::optional<Source> any;
    QTest::addRow("empty query keeps all") << QString() << any << QStringList{u"t1"_s, u"t2"_s, u"t3"_s};
    QTest::addRow("blank query keeps all") << u"  \t"_s << any << QStringList{u"t1"_s, u"t2"_s, u"t3"_s};
    QTest::addRow("title, any case, trimmed") << u"  OFFICE "_s << any << QStringList{u"t1"_s};
    QTest::addRow("detail") << u"bill pay"_s << any << QStringList{u"t2"_s};
    QTest::addRow("date") << u"2024-02"_s << any << QStringList{u"t3"_s};
    QTest::addRow("status") << u"pending"_s << any << QStringList{u"t3"_s};
    QTest::addRow("source alone") << QString() << std::optional(Source::payments) << QStringList{u"t3"_s};
    QTest::addRow("source and query") << u"office"_s << std::optional(Source::payments) << QStringList{};
    QTest::addRow("source with nothing") << QString() << std::optional(Source::mercury) << QStringList{};
    QTest::addRow("no match") << u"zzz"_s << any << QStringList{};
}

void TestBooksPages::filter()
{
    QFETCH(QString, query);
    QFETCH(std::optional<Source>, source);
    QFETCH(QStringList, kept);
    const QList<Transaction> all{
        {u"t1"_s, u"2024-03-01"_s, u"Office Supplies"_s, u"Expense"_s, -100, Direction::moneyOut, Source::books, u"Posted"_s},
        {u"t2"_s, u"2024-03-02"_s, u"Rent"_s, u"Bill payment"_s, -200, Direction::moneyOut, Source::books, u"Posted"_s},
        {u"t3"_s, u"2024-02-03"_s, u"Acme"_s, u"card"_s, 300, Direction::moneyIn, Source::payments, u"Pending"_s},
    };
    QCOMPARE(ids(TarnBooksPages::filter(all, query, source)), kept);
}

void TestBooksPages::invoicesMergeSources()
{
    const QList<TarnBooksCustomerInvoice> books{
        {u"b1"_s, u"Acme"_s, u"INV-1"_s, u"2024-03-20"_s, 10000, 4000, u"Partly paid"_s},
        {u"b2"_s, u"Beta"_s, std::nullopt, u"2024-02-01"_s, 5000, 0, u"Paid"_s},
        {u"b3"_s, u"Gamma"_s, u"INV-3"_s, u"2024-03-01"_s, 7000, 7000, u"Voided"_s},
    };
    const QList<TarnOpenInvoice> open{
        {u"w1"_s, u"c1"_s, u"Acme"_s, u" INV-1 "_s, u"2024-03-20"_s, 10000, 4000},
        {u"w2"_s, u"c2"_s, u"Delta"_s, u"INV-9"_s, u"2024-03-10"_s, 2000, 2000},
    };
    const QList<TarnPayment> payments{
        payment(u"p1"_s, u"Paid"_s, 1500, u"2024-01-10"_s, u"w5"_s),
        payment(u"p2"_s, u"Paid"_s, 500, u"2024-01-20"_s, u"w5"_s),
        payment(u"p3"_s, u"Paid"_s, 800, u"2024-01-25"_s, u"w2"_s),
        payment(u"p4"_s, u"Pending"_s, 900, u"2024-01-26"_s, u"w6"_s),
        payment(u"p5"_s, u"Paid"_s, 900, u"2024-01-27"_s, u"b2"_s),
        payment(u"p6"_s, u"Paid"_s, 900, u"2024-01-28"_s),
    };
    const QList<InvoiceRow> expected{
        {u"w2"_s, u"Invoice INV-9"_s, u"Delta"_s, u"2024-03-10"_s, 2000, 2000, true, u"Open"_s, Source::payments},
        {u"b1"_s, u"Invoice INV-1"_s, u"Acme"_s, u"2024-03-20"_s, 10000, 4000, true, u"Partly paid"_s, Source::books},
        {u"b3"_s, u"Invoice INV-3"_s, u"Gamma"_s, u"2024-03-01"_s, 7000, 7000, false, u"Voided"_s, Source::books},
        {u"b2"_s, u"Invoice"_s, u"Beta"_s, u"2024-02-01"_s, 5000, 0, false, u"Paid"_s, Source::books},
        {u"w5"_s, u"Invoice"_s, u"Client p1"_s, u"2024-01-20"_s, 2000, 0, false, u"Paid"_s, Source::payments},
    };
    QCOMPARE(invoices(open, payments, books), expected);
}

void TestBooksPages::unpaidBills_data()
{
    QTest::addColumn<QList<TarnBooksBill>>("bills");
    QTest::addColumn<UnpaidBills>("unpaid");

    const auto bill = [](const QString &status, qint64 remaining) {
        return TarnBooksBill{u"b"_s, u"Vendor"_s, std::nullopt, u"2024-03-01"_s, 10000, remaining, status};
    };
    QTest::addRow("none") << QList<TarnBooksBill>{} << UnpaidBills{0, 0};
    QTest::addRow("open and partly paid") << QList<TarnBooksBill>{bill(u"Open"_s, 10000), bill(u"Partly paid"_s, 2500)}
                                          << UnpaidBills{2, 12500};
    QTest::addRow("voided with money left is not owed") << QList<TarnBooksBill>{bill(u"Voided"_s, 10000)}
                                                        << UnpaidBills{0, 0};
    QTest::addRow("paid and overpaid") << QList<TarnBooksBill>{bill(u"Paid"_s, 0), bill(u"Open"_s, -300)}
                                       << UnpaidBills{0, 0};
    QTest::addRow("status case matters") << QList<TarnBooksBill>{bill(u"voided"_s, 100)} << UnpaidBills{1, 100};
}

void TestBooksPages::unpaidBills()
{
    QFETCH(QList<TarnBooksBill>, bills);
    QFETCH(UnpaidBills, unpaid);
    QCOMPARE(TarnBooksPages::unpaidBills(bills), unpaid);
}

void TestBooksPages::expensesAndAccounts()
{
    const auto line = [](const QString &id, const QString &name, const QString &type, qint64 debit, qint64 credit) {
        return TarnBooksRegisterLine{id, u"5000"_s, name, type, debit, credit};
    };
    const QList<TarnBooksRegisterEntry> entries{
        {u"r1"_s, u"2024-03-01"_s, u"Paper"_s, std::nullopt, std::nullopt, 1500,
         {line(u"r1"_s, u"Cash"_s, u"Asset"_s, 0, 1500), line(u"r1"_s, u"Office"_s, u"Expense"_s, 1500, 0)}},
        {u"r2"_s, u"2024-03-04"_s, u"Team lunch"_s, std::nullopt, std::nullopt, 9000,
         {line(u"r2"_s, u"Meals"_s, u"Expense"_s, 6000, 0), line(u"r2"_s, u"Office"_s, u"Expense"_s, 3000, 0),
          line(u"r2"_s, u"Cash"_s, u"Asset"_s, 0, 9000)}},
        {u"r3"_s, u"2024-03-06"_s, u"Reverse paper"_s, std::nullopt, u"r1"_s, 1500,
         {line(u"r3"_s, u"Office"_s, u"Expense"_s, 0, 1500), line(u"r3"_s, u"Cash"_s, u"Asset"_s, 1500, 0)}},
        {u"r4"_s, u"2024-03-07"_s, u"Zero line"_s, std::nullopt, std::nullopt, 0,
         {line(u"r4"_s, u"Office"_s, u"Expense"_s, 100, 100)}},
    };
    const QList<ExpenseRow> rows = expenses(entries);
    const QList<ExpenseRow> expectedRows{
        {u"r3/0"_s, u"2024-03-06"_s, u"Reverse paper"_s, u"Office"_s, -1500},
        {u"r2/0"_s, u"2024-03-04"_s, u"Team lunch"_s, u"Meals"_s, 6000},
        {u"r2/1"_s, u"2024-03-04"_s, u"Team lunch"_s, u"Office"_s, 3000},
        {u"r1/1"_s, u"2024-03-01"_s, u"Paper"_s, u"Office"_s, 1500},
    };
    QCOMPARE(rows, expectedRows);
    QCOMPARE(expensesByAccount(rows), (QList<Group>{{u"Meals"_s, 1, 6000}, {u"Office"_s, 3, 3000}}));
}

void TestBooksPages::groups()
{
    const QList<TarnBooksEntry> entries{
        entry(u"1"_s, u"2024-03-01"_s, u"a"_s, u"payment"_s, u"p1"_s, 100),
        entry(u"2"_s, u"2024-03-01"_s, u"b"_s, std::nullopt, std::nullopt, 50),
        entry(u"3"_s, u"2024-03-01"_s, u"c"_s, u"payment"_s, u"p2"_s, 200),
        entry(u"4"_s, u"2024-03-01"_s, u"d"_s, u"payroll_run"_s, std::nullopt, 7),
        entry(u"5"_s, u"2024-03-01"_s, u"e"_s, u""_s, std::nullopt, 5),
    };
    QCOMPARE(entryGroups(entries), (QList<Group>{{u"Manual entries"_s, 2, 55}, {u"Payments"_s, 2, 300},
                                                 {u"Payroll run"_s, 1, 7}}));
    QCOMPARE(mercuryGroups({{u"Software"_s, -3000}, {u""_s, 100}, {u" Software "_s, -1000}, {u"Sales"_s, 3500},
                            {u"Rent"_s, -3500}, {u"  "_s, -50}}),
             (QList<Group>{{u"Software"_s, 2, -4000}, {u"Rent"_s, 1, -3500}, {u"Sales"_s, 1, 3500},
                           {u"Uncategorized"_s, 2, 50}}));
}

void TestBooksPages::chartOfAccounts()
{
    const QList<TarnBooksAccount> accounts{
        account(u"5100"_s, u"Rent"_s, u"Expense"_s),     account(u"1000"_s, u"Cash"_s, u"Asset"_s),
        account(u"900"_s, u"Petty cash"_s, u"Asset"_s),  account(u"4000"_s, u"Sales"_s, u"Income"_s),
        account(u"X1"_s, u"Suspense"_s, u"Memo"_s),      account(u"3000"_s, u"Owner equity"_s, u"Equity"_s),
        account(u"2000"_s, u"Card"_s, u"Liability"_s),   account(u"A1"_s, u"Clearing"_s, u"Clearing"_s),
        account(u"5000"_s, u"Payroll"_s, u"Expense"_s),  account(u"1500"_s, u"Deposits"_s, u"asset"_s),
    };
    QStringList shape;
    for (const AccountGroup &group : TarnBooksPages::chartOfAccounts(accounts)) {
        QStringList codes;
        for (const TarnBooksAccount &a : group.accounts)
            codes.append(a.code);
        shape.append(group.title + u": "_s + codes.join(u' '));
    }
    QCOMPARE(shape, (QStringList{u"Assets: 900 1000"_s, u"Liabilities: 2000"_s, u"Equity: 3000"_s, u"Income: 4000"_s,
                                 u"Expenses: 5000 5100"_s, u"Clearing accounts: A1"_s, u"Memo accounts: X1"_s,
                                 u"asset accounts: 1500"_s}));
    QVERIFY(TarnBooksPages::chartOfAccounts({}).isEmpty());
}

void TestBooksPages::mercuryNote_data()
{
    QTest::addColumn<qint64>("accounts");
    QTest::addColumn<qint64>("uncategorized");
    QTest::addColumn<QString>("note");
    QTest::addRow("one account, all done") << qint64(1) << qint64(0) << u"1 account \u00B7 All categorized"_s;
    QTest::addRow("plural, some left") << qint64(2) << qint64(3) << u"2 accounts \u00B7 3 to categorize in Mercury"_s;
    QTest::addRow("no accounts") << qint64(0) << qint64(0) << u"0 accounts \u00B7 All categorized"_s;
    QTest::addRow("negative uncategorized") << qint64(1) << qint64(-4) << u"1 account \u00B7 All categorized"_s;
    QTest::addRow("one to categorize") << qint64(1) << qint64(1) << u"1 account \u00B7 1 to categorize in Mercury"_s;
}

void TestBooksPages::mercuryNote()
{
    QFETCH(qint64, accounts);
    QFETCH(qint64, uncategorized);
    QFETCH(QString, note);
    QCOMPARE(TarnBooksPages::mercuryNote(accounts, uncategorized), note);
}

void TestBooksPages::linePosting_data()
{
    QTest::addColumn<TarnBooksLineDraft>("draft");
    QTest::addColumn<std::optional<TarnBooksLinePosting>>("posting");

    const auto draft = [](const QString &quantity, const QString &price) {
        return TarnBooksLineDraft{u"l1"_s, u" Design work "_s, quantity, price, u"acc-4000"_s};
    };
    const auto posted = [](const QString &quantity, qint64 price, qint64 amount) {
        return std::optional(TarnBooksLinePosting{u"Design work"_s, quantity, price, u"acc-4000"_s, amount});
    };
    QTest::addRow("whole quantity") << draft(u"3"_s, u"150.00"_s) << posted(u"3"_s, 15000, 45000);
    QTest::addRow("fractional hours") << draft(u"1.5"_s, u"$95"_s) << posted(u"1.5"_s, 9500, 14250);
    QTest::addRow("half a cent rounds up") << draft(u"0.5"_s, u"0.01"_s) << posted(u"0.5"_s, 1, 1);
    QTest::addRow("below half a cent rounds down") << draft(u"0.4999"_s, u"0.01"_s) << posted(u"0.4999"_s, 1, 0);
    QTest::addRow("thirds stay exact") << draft(u"0.3333"_s, u"3.00"_s) << posted(u"0.3333"_s, 300, 100);
    QTest::addRow("free item") << draft(u"2"_s, u"0"_s) << posted(u"2"_s, 0, 0);
    QTest::addRow("large line") << draft(u"100"_s, u"9999999999.99"_s) << posted(u"100"_s, 999999999999, 99999999999900);
    QTest::addRow("line beyond 64-bit cents") << draft(u"999999.9999"_s, u"9999999999.99"_s)
                                              << std::optional<TarnBooksLinePosting>();
    QTest::addRow("zero quantity") << draft(u"0"_s, u"10"_s) << std::optional<TarnBooksLinePosting>();
    QTest::addRow("negative quantity") << draft(u"-1"_s, u"10"_s) << std::optional<TarnBooksLinePosting>();
    QTest::addRow("five decimals") << draft(u"1.00001"_s, u"10"_s) << std::optional<TarnBooksLinePosting>();
    QTest::addRow("seven whole digits") << draft(u"1000000"_s, u"10"_s) << std::optional<TarnBooksLinePosting>();
    QTest::addRow("bad price") << draft(u"1"_s, u"ten"_s) << std::optional<TarnBooksLinePosting>();
    QTest::addRow("no description")
        << TarnBooksLineDraft{u"l1"_s, u"  "_s, u"1"_s, u"1"_s, u"acc"_s} << std::optional<TarnBooksLinePosting>();
    QTest::addRow("no account")
        << TarnBooksLineDraft{u"l1"_s, u"Work"_s, u"1"_s, u"1"_s, QString()} << std::optional<TarnBooksLinePosting>();
}

void TestBooksPages::linePosting()
{
    QFETCH(TarnBooksLineDraft, draft);
    QFETCH(std::optional<TarnBooksLinePosting>, posting);
    QCOMPARE(draft.posting(), posting);
}

QTEST_APPLESS_MAIN(TestBooksPages)
#include "tst_books_pages.moc"
