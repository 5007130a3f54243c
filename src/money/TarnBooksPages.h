#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

struct TarnBooksAccount;
struct TarnBooksBankRow;
struct TarnBooksBill;
struct TarnBooksCustomerInvoice;
struct TarnBooksEntry;
struct TarnBooksRegisterEntry;
struct TarnBooksReport;
struct TarnOpenInvoice;
struct TarnPayment;

// What the books pages show, derived locally from the books records, the
// workspace's own payments and the Mercury bank feed. Pure functions: the
// screens own the records and call these whenever they change.
//
// Three sources can describe the same money: a payment taken in the terminal
// may also be posted into the books, and a Mercury row may match a books
// entry. The rule throughout is that the books win: a figure comes from the
// books when they have it, from the workspace's payments only where the books
// are silent, and a record already posted into the books is never counted a
// second time from its source.
namespace TarnBooksPages {

enum class Source { books, payments, mercury, none };

// The sidebar pages of the books area. The sixth, Banking, holds what the
// others do not: bank rows, the statement import, matching and reconciliation.
enum class Page { dashboard, transactions, invoices, expenses, reports, banking };
[[nodiscard]] QString title(Page page);
[[nodiscard]] QList<Page> pages();

struct MonthSummary {
    QString month; // "YYYY-MM"
    qint64 income = 0;
    qint64 expenses = 0;
    Source incomeSource = Source::none;
    Source expenseSource = Source::none;
    friend bool operator==(const MonthSummary &, const MonthSummary &) = default;
};

struct ChartBar {
    QString month;
    QString label;
    QString kind; // "Money in" or "Money out"
    qint64 cents = 0;
    friend bool operator==(const ChartBar &, const ChartBar &) = default;
};

struct Transaction {
    enum class Direction { moneyIn, moneyOut, journal };

    QString id;
    QString date;
    QString title;
    QString detail;
    qint64 cents = 0;
    Direction direction = Direction::journal;
    Source source = Source::none;
    QString status;
    friend bool operator==(const Transaction &, const Transaction &) = default;
};

struct InvoiceRow {
    QString id;
    QString title;
    QString customer;
    QString date;
    qint64 amount = 0;
    qint64 remaining = 0;
    bool open = false;
    QString status;
    Source source = Source::none;
    friend bool operator==(const InvoiceRow &, const InvoiceRow &) = default;
};

struct ExpenseRow {
    QString id;
    QString date;
    QString title;
    QString account;
    qint64 cents = 0;
    friend bool operator==(const ExpenseRow &, const ExpenseRow &) = default;
};

struct Group {
    QString label;
    qint64 count = 0;
    qint64 cents = 0;
    friend bool operator==(const Group &, const Group &) = default;
};

struct Totals {
    qint64 income = 0;
    qint64 expenses = 0;
    friend bool operator==(const Totals &, const Totals &) = default;
};

struct UnpaidBills {
    qint64 count = 0;
    qint64 cents = 0;
    friend bool operator==(const UnpaidBills &, const UnpaidBills &) = default;
};

struct AccountGroup {
    QString title;
    QList<TarnBooksAccount> accounts;
};

// One categorized feed transaction as the Mercury summary lists it: its
// category ("" while uncategorized) and signed cents.
struct MercuryCategory {
    QString category;
    qint64 cents = 0;
};

// The `count` month keys ending with endingAt's month, oldest first, the way
// a chart reads from left to right. Empty for a count below 1.
[[nodiscard]] QList<QString> months(QDate endingAt, int count);

// The last day of "YYYY-MM" as "YYYY-MM-DD"; none for anything else.
[[nodiscard]] std::optional<QString> monthEnd(QStringView month);

// One summary per month key. Income and expenses come from the books report
// whose start falls in the month when it shows any of them; where the books
// show no income, the month's "Paid" payments stand in (source payments).
// Payments never add to books figures, so a payment posted into the books is
// not counted twice.
[[nodiscard]] QList<MonthSummary> summaries(
    const QList<QString> &months, const QList<TarnBooksReport> &reports, const QList<TarnPayment> &payments);

// Per month from the Mercury feed rows among `rows`: money in and money out
// (as a positive figure), source mercury where the month has rows.
[[nodiscard]] QList<MonthSummary> mercurySummaries(const QList<QString> &months, const QList<TarnBooksBankRow> &rows);

[[nodiscard]] Totals total(const QList<MonthSummary> &summaries);

// Two bars per month, "Money in" then "Money out", labelled with the month's
// short English name ("Jan" to "Dec"), or the key itself when its month
// number is not 1 to 12.
[[nodiscard]] QList<ChartBar> chartBars(const QList<MonthSummary> &summaries);

// Books entries and workspace payments, newest first. A payment that the
// books already hold (an entry with source_type "payment" and its id) is
// listed once, as the books entry. Entries posted from payments and receipts
// read as money in, from bill payments and expenses as money out, the rest
// as journal entries.
[[nodiscard]] QList<Transaction> transactions(const QList<TarnBooksEntry> &entries, const QList<TarnPayment> &payments);

// The Mercury feed rows among `rows`, newest first, money in or out by sign.
[[nodiscard]] QList<Transaction> mercuryTransactions(const QList<TarnBooksBankRow> &rows);

// Keeps the transactions of `source` (all when none) that contain the
// trimmed, lower-cased query in their title, detail, date or status.
[[nodiscard]] QList<Transaction> filter(
    const QList<Transaction> &transactions, const QString &query, std::optional<Source> source = std::nullopt);

// Books invoices, then the workspace's open invoices that the books do not
// hold (same invoice number), then workspace invoices paid through the
// terminal that are neither open nor in the books. Open ones first, soonest
// due first; then the rest, newest first.
[[nodiscard]] QList<InvoiceRow> invoices(const QList<TarnOpenInvoice> &open, const QList<TarnPayment> &payments,
    const QList<TarnBooksCustomerInvoice> &books);

// Bills not "Voided" with money still owed: how many and how much.
[[nodiscard]] UnpaidBills unpaidBills(const QList<TarnBooksBill> &bills);

// One row per expense-account line of the register entries (debit minus
// credit, so a reversal shows as a negative row), newest first.
[[nodiscard]] QList<ExpenseRow> expenses(const QList<TarnBooksRegisterEntry> &entries);

// Expense rows by account, largest spend first.
[[nodiscard]] QList<Group> expensesByAccount(const QList<ExpenseRow> &rows);

// Entries by where they were posted from, most entries first.
[[nodiscard]] QList<Group> entryGroups(const QList<TarnBooksEntry> &entries);

// Feed transactions by category, largest movement first; uncategorized ones
// gather under "Uncategorized".
[[nodiscard]] QList<Group> mercuryGroups(const QList<MercuryCategory> &categories);

// "Assets", "Liabilities", "Equity", "Income", "Expenses"; any other type
// followed by " accounts".
[[nodiscard]] QString accountGroupTitle(const QString &type);

// Accounts under their group titles in balance-sheet then income-statement
// order (assets, liabilities, equity, income, expenses, then any other type
// by title), each group ordered by account code. Empty groups are left out.
[[nodiscard]] QList<AccountGroup> chartOfAccounts(const QList<TarnBooksAccount> &accounts);

// The account's balance on its natural side: credits less debits for the
// credit-normal types (liabilities, equity, income), debits less credits for
// the rest, so an account holding what it should reads positive and one
// overdrawn against its nature reads negative.
[[nodiscard]] qint64 naturalBalance(const TarnBooksAccount &account);

// "2 accounts · All categorized", "1 account · 3 to categorize in Mercury".
[[nodiscard]] QString mercuryNote(qint64 accounts, qint64 uncategorized);

} // namespace TarnBooksPages
