// The books at a large company's size: every page derivation over 10,000
// entries and 2,000 bank rows (budget 5 ms together), and a 500-row statement
// from text to stored rows: read, checked, sent as JSON and imported by the
// workspace's ledger with its duplicate check (budget 300 ms end to end; the
// HTTPS hop is not in it).
#include "money/TarnBankCSV.h"
#include "money/TarnBooks.h"
#include "money/TarnBooksPages.h"
#include "money/TarnBooksRegister.h"
#include "money/TarnBooksRequests.h"
#include "money/TarnPaymentRecords.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksLedger.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

QString dayOf(int i)
{
    return QDate(2026, 1, 1).addDays(i % 365).toString(Qt::ISODate);
}

TarnBooks largeBooks()
{
    TarnBooks books;
    books.company = u"Halvard & Co. LLC"_s;
    const QString types[] = { u"Asset"_s, u"Liability"_s, u"Equity"_s, u"Income"_s, u"Expense"_s };
    for (int i = 0; i < 60; ++i)
        books.accounts.append({ u"acct-%1"_s.arg(i), QString::number(1000 + i), u"Account %1"_s.arg(i), types[i % 5],
            100000 * i, 90000 * i, i == 0 ? 1 : 0 });
    const QString sources[]
        = { u"customer_invoice"_s, u"customer_receipt"_s, u"bill"_s, u"bill_payment"_s, u"payment"_s };
    for (int i = 0; i < 10000; ++i)
        books.entries.append({ u"je-%1"_s.arg(i), dayOf(i), u"Entry %1 for Brightwater"_s.arg(i), sources[i % 5],
            u"src-%1"_s.arg(i), 1000 + i });
    books.entry_count = books.entries.size();
    for (int i = 0; i < 2000; ++i)
        books.bank_rows.append({ u"row-%1"_s.arg(i), u"acct-0"_s, dayOf(i), u"Row %1"_s.arg(i),
            i % 2 ? 500 + i : -700 - i, i % 3 ? u"mercury"_s : u"file"_s, std::nullopt });
    for (int i = 0; i < 400; ++i) {
        books.bills.append(
            { u"bill-%1"_s.arg(i), u"Vendor"_s, std::nullopt, dayOf(i), 10000, i % 2 ? 0 : 5000, u"Open"_s });
        books.customer_invoices.append(
            { u"ci-%1"_s.arg(i), u"Customer"_s, QString::number(i), dayOf(i), 20000, i % 3 ? 0 : 20000, u"Open"_s });
    }
    return books;
}

void pageDerivations(benchmark::State &state)
{
    const TarnBooks books = largeBooks();
    QList<TarnPayment> payments;
    for (int i = 0; i < 500; ++i)
        payments.append({ u"pay-%1"_s.arg(i), u"Client"_s, 1000, u"Paid"_s, dayOf(i), {}, {}, {}, {} });
    QList<TarnBooksReport> reports;
    const QList<QString> months = TarnBooksPages::months(QDate(2026, 12, 1), 12);
    for (const QString &month : months)
        reports.append({ month + u"-01"_s, *TarnBooksPages::monthEnd(month), 500000, 300000, 200000 });
    for (auto _ : state) {
        const auto summaries = TarnBooksPages::summaries(months, reports, payments);
        benchmark::DoNotOptimize(TarnBooksPages::chartBars(summaries));
        benchmark::DoNotOptimize(TarnBooksPages::total(summaries));
        benchmark::DoNotOptimize(TarnBooksPages::mercurySummaries(months, books.bank_rows));
        const auto transactions = TarnBooksPages::transactions(books.entries, payments);
        benchmark::DoNotOptimize(TarnBooksPages::filter(transactions, u"brightwater"_s));
        benchmark::DoNotOptimize(TarnBooksPages::mercuryTransactions(books.bank_rows));
        benchmark::DoNotOptimize(TarnBooksPages::invoices({}, payments, books.customer_invoices));
        benchmark::DoNotOptimize(TarnBooksPages::unpaidBills(books.bills));
        benchmark::DoNotOptimize(TarnBooksPages::entryGroups(books.entries));
        benchmark::DoNotOptimize(TarnBooksPages::chartOfAccounts(books.accounts));
    }
}
BENCHMARK(pageDerivations)->Unit(benchmark::kMillisecond);

void importStatement(benchmark::State &state)
{
    QTemporaryDir data;
    WorkspaceStore store;
    QString error;
    if (!store.open(data.path(), &error)) {
        state.SkipWithError(qPrintable(error));
        return;
    }
    BooksLedger ledger(store.database());
    ledger.plantDemoWhenEmpty();
    int run = 0;
    for (auto _ : state) {
        // New rows each time, so every row is stored rather than skipped.
        QString csv = u"Date,Description,Amount,Reference\n"_s;
        for (int i = 0; i < 500; ++i)
            csv += u"%1,Card sale %2 of run %3,%4.25,R%2\n"_s.arg(dayOf(i)).arg(i).arg(run).arg(10 + i);
        ++run;
        const QList<TarnBankCSV::Row> rows = TarnBankCSV::parse(csv);
        const QJsonObject body = TarnBooksBankImport { u"acct-1000"_s, rows }.toJSON();
        const BooksLedger::Outcome stored = ledger.importRows(u"acct-1000"_s, body.value("rows"_L1).toArray());
        if (stored.body.value("imported"_L1).toInteger() != 500)
            state.SkipWithError("the statement was not stored");
    }
}
BENCHMARK(importStatement)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
