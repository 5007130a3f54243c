#include "money/TarnBooksPages.h"

#include "money/TarnBooksBank.h"
#include "money/TarnBooksDocuments.h"
#include "money/TarnBooksLedger.h"
#include "money/TarnBooksRegister.h"
#include "money/TarnCents.h"
#include "money/TarnPaymentRecords.h"
#include "money/TarnPaymentTotals.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <numeric>
#include <vector>

using namespace Qt::StringLiterals;

namespace TarnBooksPages {

namespace {

// The labels are QStrings over static text, so that the rows of a large
// ledger share them instead of each making its own copy.
struct Origin {
    QString type;
    QString one;
    QString many;
    Transaction::Direction direction;
};

// Where a books entry was posted from, as its source_type names it.
const Origin origins[] = {
    { u"invoice"_s, u"Invoice"_s, u"Invoices"_s, Transaction::Direction::journal },
    { u"payment"_s, u"Payment"_s, u"Payments"_s, Transaction::Direction::moneyIn },
    { u"customer_receipt"_s, u"Customer receipt"_s, u"Customer receipts"_s, Transaction::Direction::moneyIn },
    { u"bill"_s, u"Bill"_s, u"Bills"_s, Transaction::Direction::journal },
    { u"bill_payment"_s, u"Bill payment"_s, u"Bill payments"_s, Transaction::Direction::moneyOut },
    { u"expense"_s, u"Expense"_s, u"Expenses"_s, Transaction::Direction::moneyOut },
    { u"bank_row"_s, u"Bank transaction"_s, u"Bank transactions"_s, Transaction::Direction::journal },
    { u"reversal"_s, u"Reversal"_s, u"Reversals"_s, Transaction::Direction::journal },
};

const Origin *origin(const std::optional<QString> &type)
{
    if (!type)
        return nullptr;
    for (const Origin &o : origins) {
        if (*type == o.type)
            return &o;
    }
    return nullptr;
}

// The bank feed's own word for a row, as the books list shows it.
QString mercuryStatusText(const QString &status)
{
    if (status == "uncategorized"_L1)
        return u"To categorize"_s;
    if (status == "matched"_L1)
        return u"Categorized"_s;
    return status;
}

// An unknown source type still reads as words: "payroll_run" gives "Payroll run".
QString spelled(const QString &type)
{
    QString text = type;
    text.replace(u'_', u' ');
    if (!text.isEmpty())
        text[0] = text[0].toUpper();
    return text;
}

QString originLabel(const std::optional<QString> &type, bool plural)
{
    if (const Origin *o = origin(type))
        return plural ? o->many : o->one;
    if (!type || QStringView(*type).trimmed().isEmpty())
        return plural ? u"Manual entries"_s : u"Manual entry"_s;
    return spelled(*type);
}

Transaction::Direction directionOf(qint64 cents)
{
    return cents < 0 ? Transaction::Direction::moneyOut : Transaction::Direction::moneyIn;
}

// Newest first; on the same day books before payments before Mercury, then by id.
// The positions are sorted rather than the rows, so that each row is moved
// once instead of at every step of the sort.
void sortNewestFirst(QList<Transaction> &list)
{
    const QList<Transaction> &rows = list;
    std::vector<qsizetype> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&rows](qsizetype x, qsizetype y) {
        const Transaction &a = rows[x];
        const Transaction &b = rows[y];
        if (const int byDate = QString::compare(a.date, b.date); byDate != 0)
            return byDate > 0;
        if (a.source != b.source)
            return a.source < b.source;
        return a.id < b.id;
    });
    QList<Transaction> sorted;
    sorted.reserve(list.size());
    for (const qsizetype at : order)
        sorted.append(std::move(list[at]));
    list = std::move(sorted);
}

// Labels in first-seen order with their counts and sums.
class Grouper {
public:
    void add(const QString &label, qint64 cents)
    {
        auto found = m_index.constFind(label);
        if (found == m_index.cend()) {
            found = m_index.insert(label, m_groups.size());
            m_groups.append({ label, 0, 0 });
        }
        Group &group = m_groups[*found];
        ++group.count;
        group.cents = TarnCents::add(group.cents, cents);
    }

    template <typename Less> QList<Group> sorted(Less less) &&
    {
        std::stable_sort(m_groups.begin(), m_groups.end(), less);
        return std::move(m_groups);
    }

private:
    QHash<QString, qsizetype> m_index;
    QList<Group> m_groups;
};

int digitsAt(QStringView text, qsizetype at, qsizetype count)
{
    int value = 0;
    for (qsizetype i = at; i < at + count; ++i) {
        if (text[i].unicode() < u'0' || text[i].unicode() > u'9')
            return -1;
        value = value * 10 + (text[i].unicode() - u'0');
    }
    return value;
}

bool isNumber(const QString &code)
{
    return !code.isEmpty()
        && std::all_of(code.cbegin(), code.cend(), [](QChar c) { return c.unicode() >= u'0' && c.unicode() <= u'9'; });
}

// Account codes are usually numbers ("200" before "1000"); any other code
// falls back to text order.
bool codeLess(const QString &a, const QString &b)
{
    if (isNumber(a) && isNumber(b)) {
        const auto significant = [](const QString &code) {
            qsizetype i = 0;
            while (i + 1 < code.size() && code[i] == u'0')
                ++i;
            return QStringView(code).sliced(i);
        };
        const QStringView x = significant(a);
        const QStringView y = significant(b);
        if (x.size() != y.size())
            return x.size() < y.size();
        if (x != y)
            return x < y;
    }
    return a < b;
}

const char *const monthNames[] = { "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec" };

} // namespace

QString title(Page page)
{
    switch (page) {
    case Page::dashboard:
        return u"Dashboard"_s;
    case Page::transactions:
        return u"Transactions"_s;
    case Page::invoices:
        return u"Invoices"_s;
    case Page::expenses:
        return u"Expenses"_s;
    case Page::reports:
        return u"Reports"_s;
    case Page::banking:
        return u"Banking"_s;
    }
    return {};
}

QList<Page> pages()
{
    return { Page::dashboard, Page::transactions, Page::invoices, Page::expenses, Page::reports, Page::banking };
}

QList<QString> months(QDate endingAt, int count)
{
    QList<QString> keys;
    if (!endingAt.isValid() || count < 1)
        return keys;
    keys.reserve(count);
    const qint64 last = qint64(endingAt.year()) * 12 + (endingAt.month() - 1);
    for (qint64 index = last - (count - 1); index <= last; ++index) {
        // Floor division, so that stepping back from January 1 BC still works.
        const qint64 year = index >= 0 ? index / 12 : -((-index + 11) / 12);
        const qint64 month = index - year * 12 + 1;
        keys.append(QString::asprintf("%04lld-%02lld", static_cast<long long>(year), static_cast<long long>(month)));
    }
    return keys;
}

std::optional<QString> monthEnd(QStringView month)
{
    if (month.size() != 7 || month[4] != u'-')
        return std::nullopt;
    const int year = digitsAt(month, 0, 4);
    const int number = digitsAt(month, 5, 2);
    if (year < 1 || number < 1 || number > 12)
        return std::nullopt;
    return QString::asprintf("%04d-%02d-%02d", year, number, QDate(year, number, 1).daysInMonth());
}

QList<MonthSummary> summaries(
    const QList<QString> &months, const QList<TarnBooksReport> &reports, const QList<TarnPayment> &payments)
{
    QList<MonthSummary> out;
    out.reserve(months.size());
    for (const QString &month : months) {
        const auto report = std::find_if(reports.cbegin(), reports.cend(),
            [&month](const TarnBooksReport &r) { return QStringView(r.start).left(7) == month; });
        const bool booked = report != reports.cend();
        MonthSummary summary { month, 0, 0, Source::none, Source::none };
        if (booked) {
            summary.expenses = report->expenses;
            summary.expenseSource = Source::books;
        }
        if (booked && report->revenue != 0) {
            summary.income = report->revenue;
            summary.incomeSource = Source::books;
        } else if (const TarnPaymentTotals::Received received = TarnPaymentTotals::receivedInMonth(payments, month);
                   received.count > 0) {
            summary.income = received.total;
            summary.incomeSource = Source::payments;
        } else if (booked) {
            summary.incomeSource = Source::books;
        }
        out.append(summary);
    }
    return out;
}

QList<MonthSummary> mercurySummaries(const QList<QString> &months, const QList<TarnBooksBankRow> &rows)
{
    QList<MonthSummary> out;
    out.reserve(months.size());
    QHash<QStringView, qsizetype> at;
    for (const QString &month : months) {
        at.insert(month, out.size());
        out.append({ month, 0, 0, Source::none, Source::none });
    }
    for (const TarnBooksBankRow &row : rows) {
        const auto found = at.constFind(QStringView(row.row_date).left(7));
        if (found == at.cend() || !row.isMercury())
            continue;
        MonthSummary &summary = out[*found];
        summary.incomeSource = summary.expenseSource = Source::mercury;
        if (row.amount > 0)
            summary.income = TarnCents::add(summary.income, row.amount);
        else
            summary.expenses = TarnCents::subtract(summary.expenses, row.amount);
    }
    return out;
}

Totals total(const QList<MonthSummary> &summaries)
{
    Totals totals;
    for (const MonthSummary &summary : summaries) {
        totals.income = TarnCents::add(totals.income, summary.income);
        totals.expenses = TarnCents::add(totals.expenses, summary.expenses);
    }
    return totals;
}

QList<ChartBar> chartBars(const QList<MonthSummary> &summaries)
{
    QList<ChartBar> bars;
    bars.reserve(summaries.size() * 2);
    for (const MonthSummary &summary : summaries) {
        const int number = summary.month.size() == 7 ? digitsAt(summary.month, 5, 2) : -1;
        const QString label = number >= 1 && number <= 12 ? QString::fromLatin1(monthNames[number - 1]) : summary.month;
        bars.append({ summary.month, label, u"Money in"_s, summary.income });
        bars.append({ summary.month, label, u"Money out"_s, summary.expenses });
    }
    return bars;
}

QList<Transaction> transactions(const QList<TarnBooksEntry> &entries, const QList<TarnPayment> &payments)
{
    QList<Transaction> out;
    out.reserve(entries.size() + payments.size());
    QSet<QString> posted;
    for (const TarnBooksEntry &entry : entries) {
        const Origin *from = origin(entry.source_type);
        const Transaction::Direction direction = from ? from->direction : Transaction::Direction::journal;
        const QString label = originLabel(entry.source_type, false);
        if (entry.source_type == u"payment"_s && entry.source_id)
            posted.insert(*entry.source_id);
        qint64 cents = entry.amount;
        if (direction == Transaction::Direction::moneyIn && cents < 0)
            cents = TarnCents::subtract(0, cents);
        else if (direction == Transaction::Direction::moneyOut && cents > 0)
            cents = -cents;
        out.append({
            .id = entry.id,
            .date = entry.entry_date,
            .title = QStringView(entry.memo).trimmed().isEmpty() ? label : entry.memo,
            .detail = label,
            .cents = cents,
            .direction = direction,
            .source = Source::books,
            .status = u"Posted"_s,
        });
    }
    for (const TarnPayment &payment : payments) {
        if (posted.contains(payment.id))
            continue;
        QStringList detail;
        if (payment.method && !payment.method->isEmpty())
            detail.append(*payment.method);
        if (payment.reference && !payment.reference->isEmpty())
            detail.append(*payment.reference);
        out.append({
            .id = payment.id,
            .date = payment.date.left(10),
            .title = payment.client,
            .detail = detail.isEmpty() ? u"Payment"_s : detail.join(u" \u00B7 "_s),
            .cents = payment.amount,
            .direction = directionOf(payment.amount),
            .source = Source::payments,
            .status = payment.status,
        });
    }
    sortNewestFirst(out);
    return out;
}

QList<Transaction> mercuryTransactions(const QList<TarnBooksBankRow> &rows)
{
    QList<Transaction> out;
    for (const TarnBooksBankRow &row : rows) {
        if (!row.isMercury())
            continue;
        out.append({
            .id = row.id,
            .date = row.row_date,
            .title = row.description,
            .detail = u"Mercury"_s,
            .cents = row.amount,
            .direction = directionOf(row.amount),
            .source = Source::mercury,
            .status = mercuryStatusText(row.mercury_status.value_or(QString())),
        });
    }
    sortNewestFirst(out);
    return out;
}

QList<Transaction> filter(const QList<Transaction> &transactions, const QString &query, std::optional<Source> source)
{
    const QString needle = query.trimmed().toLower();
    QList<Transaction> out;
    out.reserve(transactions.size());
    for (const Transaction &t : transactions) {
        if (source && t.source != *source)
            continue;
        // Compared without making lower-cased copies: a search runs over every
        // row of a large ledger at each key stroke.
        const auto has = [&needle](const QString &text) { return text.contains(needle, Qt::CaseInsensitive); };
        if (!needle.isEmpty() && !has(t.title) && !has(t.detail) && !t.date.contains(needle) && !has(t.status))
            continue;
        out.append(t);
    }
    return out;
}

QList<InvoiceRow> invoices(const QList<TarnOpenInvoice> &open, const QList<TarnPayment> &payments,
    const QList<TarnBooksCustomerInvoice> &books)
{
    const auto titled = [](const std::optional<QString> &number) {
        return number && !number->trimmed().isEmpty() ? u"Invoice "_s + number->trimmed() : u"Invoice"_s;
    };
    QList<InvoiceRow> out;
    QSet<QString> bookNumbers;
    QSet<QString> known;
    for (const TarnBooksCustomerInvoice &invoice : books) {
        if (invoice.invoice_number && !invoice.invoice_number->trimmed().isEmpty())
            bookNumbers.insert(invoice.invoice_number->trimmed());
        known.insert(invoice.id);
        out.append({
            .id = invoice.id,
            .title = titled(invoice.invoice_number),
            .customer = invoice.customer,
            .date = invoice.due_on,
            .amount = invoice.amount,
            .remaining = invoice.remaining,
            .open = invoice.remaining > 0 && invoice.status != u"Voided"_s,
            .status = invoice.status,
            .source = Source::books,
        });
    }
    for (const TarnOpenInvoice &invoice : open) {
        known.insert(invoice.id);
        if (invoice.invoice_number && bookNumbers.contains(invoice.invoice_number->trimmed()))
            continue;
        out.append({
            .id = invoice.id,
            .title = titled(invoice.invoice_number),
            .customer = invoice.client,
            .date = invoice.due_on,
            .amount = invoice.amount,
            .remaining = invoice.remaining,
            .open = invoice.remaining > 0,
            .status = invoice.remaining > 0 ? u"Open"_s : u"Paid"_s,
            .source = Source::payments,
        });
    }
    // Invoices settled in the terminal: one row per invoice id, the sum of its
    // paid payments, dated by the latest of them.
    QHash<QString, qsizetype> paidRow;
    for (const TarnPayment &payment : payments) {
        if (payment.status != u"Paid"_s || !payment.invoice_id || payment.invoice_id->isEmpty()
            || known.contains(*payment.invoice_id))
            continue;
        const QString date = payment.date.left(10);
        const auto found = paidRow.constFind(*payment.invoice_id);
        if (found == paidRow.cend()) {
            paidRow.insert(*payment.invoice_id, out.size());
            out.append({ *payment.invoice_id, u"Invoice"_s, payment.client, date, payment.amount, 0, false, u"Paid"_s,
                Source::payments });
        } else {
            InvoiceRow &row = out[*found];
            row.amount = TarnCents::add(row.amount, payment.amount);
            row.date = std::max(row.date, date);
        }
    }
    std::stable_sort(out.begin(), out.end(), [](const InvoiceRow &a, const InvoiceRow &b) {
        if (a.open != b.open)
            return a.open;
        if (a.date != b.date)
            return a.open ? a.date < b.date : a.date > b.date;
        return false;
    });
    return out;
}

UnpaidBills unpaidBills(const QList<TarnBooksBill> &bills)
{
    UnpaidBills unpaid;
    for (const TarnBooksBill &bill : bills) {
        if (bill.status == u"Voided"_s || bill.remaining <= 0)
            continue;
        ++unpaid.count;
        unpaid.cents = TarnCents::add(unpaid.cents, bill.remaining);
    }
    return unpaid;
}

QList<ExpenseRow> expenses(const QList<TarnBooksRegisterEntry> &entries)
{
    QList<ExpenseRow> out;
    for (const TarnBooksRegisterEntry &entry : entries) {
        for (qsizetype i = 0; i < entry.lines.size(); ++i) {
            const TarnBooksRegisterLine &line = entry.lines.at(i);
            const qint64 cents = TarnCents::subtract(line.debit, line.credit);
            if (line.type != u"Expense"_s || cents == 0)
                continue;
            out.append({
                .id = entry.id + u'/' + QString::number(i),
                .date = entry.entry_date,
                .title = entry.memo.trimmed().isEmpty() ? originLabel(entry.source_type, false) : entry.memo,
                .account = line.name,
                .cents = cents,
            });
        }
    }
    std::stable_sort(out.begin(), out.end(), [](const ExpenseRow &a, const ExpenseRow &b) { return a.date > b.date; });
    return out;
}

QList<Group> expensesByAccount(const QList<ExpenseRow> &rows)
{
    Grouper grouper;
    for (const ExpenseRow &row : rows)
        grouper.add(row.account, row.cents);
    return std::move(grouper).sorted(
        [](const Group &a, const Group &b) { return a.cents != b.cents ? a.cents > b.cents : a.label < b.label; });
}

QList<Group> entryGroups(const QList<TarnBooksEntry> &entries)
{
    Grouper grouper;
    for (const TarnBooksEntry &entry : entries)
        grouper.add(originLabel(entry.source_type, true), entry.amount);
    return std::move(grouper).sorted(
        [](const Group &a, const Group &b) { return a.count != b.count ? a.count > b.count : a.label < b.label; });
}

QList<Group> mercuryGroups(const QList<MercuryCategory> &categories)
{
    Grouper grouper;
    for (const MercuryCategory &c : categories) {
        const QString label = c.category.trimmed();
        grouper.add(label.isEmpty() ? u"Uncategorized"_s : label, c.cents);
    }
    return std::move(grouper).sorted([](const Group &a, const Group &b) {
        const quint64 x = a.cents < 0 ? 0 - quint64(a.cents) : quint64(a.cents);
        const quint64 y = b.cents < 0 ? 0 - quint64(b.cents) : quint64(b.cents);
        return x != y ? x > y : a.label < b.label;
    });
}

QString accountGroupTitle(const QString &type)
{
    if (type == u"Asset"_s)
        return u"Assets"_s;
    if (type == u"Liability"_s)
        return u"Liabilities"_s;
    if (type == u"Equity"_s)
        return u"Equity"_s;
    if (type == u"Income"_s)
        return u"Income"_s;
    if (type == u"Expense"_s)
        return u"Expenses"_s;
    return type + u" accounts"_s;
}

QList<AccountGroup> chartOfAccounts(const QList<TarnBooksAccount> &accounts)
{
    static const QString standard[] = { u"Asset"_s, u"Liability"_s, u"Equity"_s, u"Income"_s, u"Expense"_s };
    const auto rank = [](const QString &type) {
        const auto at = std::find(std::begin(standard), std::end(standard), type);
        return int(at - std::begin(standard));
    };
    QList<AccountGroup> groups;
    QHash<QString, qsizetype> index;
    QHash<QString, int> ranks;
    for (const TarnBooksAccount &account : accounts) {
        const QString groupTitle = accountGroupTitle(account.type);
        auto found = index.constFind(groupTitle);
        if (found == index.cend()) {
            found = index.insert(groupTitle, groups.size());
            ranks.insert(groupTitle, rank(account.type));
            groups.append({ groupTitle, {} });
        }
        groups[*found].accounts.append(account);
    }
    for (AccountGroup &group : groups) {
        std::stable_sort(group.accounts.begin(), group.accounts.end(),
            [](const TarnBooksAccount &a, const TarnBooksAccount &b) { return codeLess(a.code, b.code); });
    }
    std::stable_sort(groups.begin(), groups.end(), [&ranks](const AccountGroup &a, const AccountGroup &b) {
        const int x = ranks.value(a.title);
        const int y = ranks.value(b.title);
        return x != y ? x < y : a.title < b.title;
    });
    return groups;
}

qint64 naturalBalance(const TarnBooksAccount &account)
{
    const bool creditNormal
        = account.type == "Liability"_L1 || account.type == "Equity"_L1 || account.type == "Income"_L1;
    return creditNormal ? account.credits - account.debits : account.debits - account.credits;
}

QString mercuryNote(qint64 accounts, qint64 uncategorized)
{
    const QString linked = QString::number(accounts) + (accounts == 1 ? u" account"_s : u" accounts"_s);
    const QString review
        = uncategorized < 1 ? u"All categorized"_s : QString::number(uncategorized) + u" to categorize in Mercury"_s;
    return linked + u" \u00B7 "_s + review;
}

} // namespace TarnBooksPages
