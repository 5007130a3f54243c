#include "money/NativeBooksReport.h"

#include "money/NativeOutcome.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"
#include "service/TarnAPI.h"

#include <QPointer>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

using Row = NativeBooksReport::Row;

Row rowOf(const TarnBooksRegisterEntry &entry)
{
    QStringList debits;
    QStringList credits;
    for (const TarnBooksRegisterLine &line : entry.lines)
        (line.debit > 0 ? debits : credits).append(line.code + u' ' + line.name);
    return { entry.id, entry.entry_date, entry.memo, TarnMoneyInput::dollars(entry.amount),
        (debits + credits).join(u" · "_s), entry.reverses_id.has_value() };
}

} // namespace

NativeBooksReport::NativeBooksReport(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_rows({
          { "entryId", [](const Row &r) { return r.id; } },
          { "date", [](const Row &r) { return r.date; } },
          { "memo", [](const Row &r) { return r.memo; } },
          { "amount", [](const Row &r) { return r.amount; } },
          { "accounts", [](const Row &r) { return r.accounts; } },
          { "reversal", [](const Row &r) { return r.reversal; } },
      })
{
}

QString NativeBooksReport::revenue() const
{
    return TarnMoneyInput::dollars(m_report.revenue);
}

QString NativeBooksReport::expenses() const
{
    return TarnMoneyInput::dollars(m_report.expenses);
}

QString NativeBooksReport::netIncome() const
{
    return TarnMoneyInput::dollars(m_report.net_income);
}

void NativeBooksReport::refresh()
{
    if (!m_start.isEmpty())
        load(m_start, m_end, m_accountID);
}

void NativeBooksReport::load(const QString &start, const QString &end, const QString &accountID)
{
    const int generation = ++m_generation;
    m_report = {};
    m_total = 0;
    m_rows.setRows({});
    if (!TarnLedgerDates::isDay(start) || !TarnLedgerDates::isDay(end) || end < start) {
        m_error = u"Choose a period from one YYYY-MM-DD day to a later one."_s;
        Q_EMIT changed();
        return;
    }
    m_start = start;
    m_end = end;
    m_accountID = accountID;
    m_error.clear();
    m_loading = true;
    Q_EMIT changed();
    loadPeriod(start, end, accountID, generation);
}

QCoro::Task<> NativeBooksReport::loadPeriod(QString start, QString end, QString accountID, int generation)
{
    const QPointer<NativeBooksReport> self(this);
    QString failure;
    std::optional<TarnBooksReport> report;
    std::optional<TarnBooksRegister> page;
    try {
        report = co_await TarnBooksCalls::booksReport(m_api, start, end);
        if (self && generation == m_generation)
            page = co_await TarnBooksCalls::booksRegister(m_api, start, end, accountID, 0);
    } catch (const TarnAPIError &error) {
        failure = error.text();
    }
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    m_error = failure;
    if (report)
        m_report = *report;
    if (page)
        append(*page);
    Q_EMIT changed();
}

void NativeBooksReport::more()
{
    if (m_loading || !hasMore())
        return;
    m_loading = true;
    Q_EMIT changed();
    loadPage(m_rows.rowCount(), m_generation);
}

QCoro::Task<> NativeBooksReport::loadPage(qint64 offset, int generation)
{
    const QPointer<NativeBooksReport> self(this);
    auto call = [&] { return TarnBooksCalls::booksRegister(m_api, m_start, m_end, m_accountID, offset); };
    NativeOutcome<TarnBooksRegister> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    m_error = outcome.error;
    if (outcome.value)
        append(*outcome.value);
    Q_EMIT changed();
}

void NativeBooksReport::append(const TarnBooksRegister &page)
{
    m_total = page.total;
    QList<Row> rows = m_rows.rows();
    QSet<QString> listed;
    for (const Row &row : rows)
        listed.insert(row.id);
    // An entry posted between two pages shifts the offsets by one: the next
    // page may repeat an entry already listed.
    for (const TarnBooksRegisterEntry &entry : page.entries) {
        if (!listed.contains(entry.id))
            rows.append(rowOf(entry));
    }
    m_rows.setRows(rows);
}
