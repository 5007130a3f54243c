#include "money/NativeBooksDashboard.h"

#include "money/TarnBooksCalls.h"
#include "money/TarnMoneyInput.h"
#include "service/TarnAPI.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Bar = NativeBooksDashboard::Bar;

} // namespace

NativeBooksDashboard::NativeBooksDashboard(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_bars({
          { "month", [](const Bar &b) { return b.month; } },
          { "label", [](const Bar &b) { return b.label; } },
          { "kind", [](const Bar &b) { return b.kind; } },
          { "cents", [](const Bar &b) { return static_cast<double>(b.cents); } },
          { "amount", [](const Bar &b) { return TarnMoneyInput::dollars(b.cents); } },
      })
{
}

double NativeBooksDashboard::largestBar() const
{
    qint64 largest = 0;
    for (const Bar &bar : m_bars.rows())
        largest = std::max(largest, bar.cents);
    return static_cast<double>(largest);
}

NativeBooksDashboard::ChartScale NativeBooksDashboard::scaleFor(qint64 largestCents)
{
    const bool thousands = largestCents >= 1'000'000;
    const double unit = thousands ? 1000 : 1;
    const double largest = static_cast<double>(largestCents) / 100 / unit;
    // Four intervals at most, each 1, 2 or 5 times a power of ten.
    double step = 1;
    while (step * 4 < largest) {
        if (step * 2 * 4 >= largest)
            step *= 2;
        else if (step * 5 * 4 >= largest)
            step *= 5;
        else
            step *= 10;
    }
    const int intervals = std::max(1, static_cast<int>(std::ceil(largest / step)));
    return { intervals * step, intervals + 1, unit, thousands ? u"$%.0fk"_s : u"$%.0f"_s };
}

QStringList NativeBooksDashboard::chartMonths() const
{
    QStringList labels;
    for (const Bar &bar : m_bars.rows()) {
        if (bar.kind == "Money in"_L1)
            labels.append(bar.label);
    }
    return labels;
}

QVariantList NativeBooksDashboard::chartValues(const QString &kind) const
{
    const double unit = chartScale().unit;
    QVariantList values;
    for (const Bar &bar : m_bars.rows()) {
        if (bar.kind == kind)
            values.append(static_cast<double>(bar.cents) / 100 / unit);
    }
    return values;
}

QVariantList NativeBooksDashboard::chartIn() const
{
    return chartValues(u"Money in"_s);
}

QVariantList NativeBooksDashboard::chartOut() const
{
    return chartValues(u"Money out"_s);
}

QString NativeBooksDashboard::moneyIn() const
{
    return TarnMoneyInput::dollars(TarnBooksPages::total(m_summaries).income);
}

QString NativeBooksDashboard::moneyOut() const
{
    return TarnMoneyInput::dollars(TarnBooksPages::total(m_summaries).expenses);
}

QString NativeBooksDashboard::unpaidBills() const
{
    if (m_unpaid.count == 0)
        return u"No unpaid bills"_s;
    return u"%1 unpaid %2 · %3"_s.arg(m_unpaid.count)
        .arg(m_unpaid.count == 1 ? u"bill"_s : u"bills"_s, TarnMoneyInput::dollars(m_unpaid.cents));
}

void NativeBooksDashboard::show(const TarnBooks &books, const QList<TarnPayment> &payments, QDate today)
{
    const int generation = ++m_generation;
    m_payments = payments;
    m_unpaid = TarnBooksPages::unpaidBills(books.bills);
    const qint64 banks = std::count_if(
        books.accounts.begin(), books.accounts.end(), [](const TarnBooksAccount &a) { return a.bank != 0; });
    const qint64 uncategorized = std::count_if(
        books.bank_rows.begin(), books.bank_rows.end(), [](const TarnBooksBankRow &row) { return row.isMercury(); });
    m_bankNote = TarnBooksPages::mercuryNote(banks, uncategorized);
    m_loading = true;
    Q_EMIT changed();
    loadReports(TarnBooksPages::months(today, monthCount), generation);
}

QCoro::Task<> NativeBooksDashboard::loadReports(QList<QString> months, int generation)
{
    const QPointer<NativeBooksDashboard> self(this);
    QList<TarnBooksReport> reports;
    QString failure;
    try {
        for (const QString &month : months) {
            const QString start = month + u"-01"_s;
            const QString end = TarnBooksPages::monthEnd(month).value_or(start);
            TarnBooksReport report = co_await TarnBooksCalls::booksReport(m_api, start, end);
            if (!self || generation != m_generation)
                co_return;
            reports.append(std::move(report));
        }
    } catch (const TarnAPIError &error) {
        failure = error.text();
    }
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    m_error = failure;
    if (failure.isEmpty()) {
        m_summaries = TarnBooksPages::summaries(months, reports, m_payments);
        QList<Bar> bars;
        for (const TarnBooksPages::ChartBar &bar : TarnBooksPages::chartBars(m_summaries))
            bars.append({ bar.month + u' ' + bar.kind, bar.month, bar.label, bar.kind, bar.cents });
        m_bars.setRows(bars);
    }
    Q_EMIT changed();
}
