#include "money/NativeBooksTransactions.h"

#include "money/TarnMoneyInput.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

using Source = TarnBooksPages::Source;
using TransactionRow = NativeBooksTransactions::TransactionRow;
using InvoiceRow = NativeBooksTransactions::InvoiceRow;

struct SourceName {
    Source source;
    QLatin1StringView name;
};
constexpr std::array sourceNames { SourceName { Source::books, "books"_L1 },
    SourceName { Source::payments, "payments"_L1 }, SourceName { Source::mercury, "mercury"_L1 } };

QString nameOf(Source source)
{
    for (const SourceName &named : sourceNames) {
        if (named.source == source)
            return named.name;
    }
    return {};
}

QString directionOf(TarnBooksPages::Transaction::Direction direction)
{
    using Direction = TarnBooksPages::Transaction::Direction;
    return direction == Direction::moneyIn ? u"in"_s : direction == Direction::moneyOut ? u"out"_s : u"journal"_s;
}

} // namespace

NativeBooksTransactions::NativeBooksTransactions(QObject *parent)
    : QObject(parent)
    , m_transactions({
          { "transactionId", [](const TransactionRow &r) { return r.id; } },
          { "date", [](const TransactionRow &r) { return r.date; } },
          { "title", [](const TransactionRow &r) { return r.title; } },
          { "detail", [](const TransactionRow &r) { return r.detail; } },
          { "amount", [](const TransactionRow &r) { return r.amount; } },
          { "direction", [](const TransactionRow &r) { return r.direction; } },
          { "source", [](const TransactionRow &r) { return r.source; } },
          { "status", [](const TransactionRow &r) { return r.status; } },
      })
    , m_invoices({
          { "invoiceId", [](const InvoiceRow &r) { return r.id; } },
          { "title", [](const InvoiceRow &r) { return r.title; } },
          { "customer", [](const InvoiceRow &r) { return r.customer; } },
          { "date", [](const InvoiceRow &r) { return r.date; } },
          { "amount", [](const InvoiceRow &r) { return r.amount; } },
          { "remaining", [](const InvoiceRow &r) { return r.remaining; } },
          { "open", [](const InvoiceRow &r) { return r.open; } },
          { "status", [](const InvoiceRow &r) { return r.status; } },
          { "voidable", [](const InvoiceRow &r) { return r.voidable; } },
      })
{
}

void NativeBooksTransactions::show(
    const TarnBooks &books, const QList<TarnPayment> &payments, const QList<TarnOpenInvoice> &open)
{
    m_all = TarnBooksPages::transactions(books.entries, payments);
    m_all.append(TarnBooksPages::mercuryTransactions(books.bank_rows));
    apply();
    QList<InvoiceRow> invoices;
    for (const TarnBooksPages::InvoiceRow &row : TarnBooksPages::invoices(open, payments, books.customer_invoices)) {
        invoices.append({ row.id, row.title, row.customer, row.date, TarnMoneyInput::dollars(row.amount),
            TarnMoneyInput::dollars(row.remaining), row.open, row.status,
            row.source == TarnBooksPages::Source::books && row.status != "Voided"_L1 && row.remaining == row.amount });
    }
    m_invoices.setRows(invoices);
}

void NativeBooksTransactions::setQuery(const QString &query)
{
    if (query == m_query)
        return;
    m_query = query;
    apply();
    Q_EMIT filterChanged();
}

QString NativeBooksTransactions::source() const
{
    return m_source ? nameOf(*m_source) : u"all"_s;
}

void NativeBooksTransactions::setSource(const QString &source)
{
    std::optional<Source> chosen;
    for (const SourceName &named : sourceNames) {
        if (named.name == source)
            chosen = named.source;
    }
    if (chosen == m_source)
        return;
    m_source = chosen;
    apply();
    Q_EMIT filterChanged();
}

void NativeBooksTransactions::apply()
{
    QList<TransactionRow> rows;
    for (const TarnBooksPages::Transaction &t : TarnBooksPages::filter(m_all, m_query, m_source)) {
        rows.append({ t.id, t.date, t.title, t.detail, TarnMoneyInput::dollars(t.cents), directionOf(t.direction),
            nameOf(t.source), t.status });
    }
    m_transactions.setRows(rows);
}
