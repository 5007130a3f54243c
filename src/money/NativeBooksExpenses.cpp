#include "money/NativeBooksExpenses.h"

#include "money/TarnBooksCalls.h"
#include "money/TarnBooksPages.h"
#include "money/TarnMoneyInput.h"
#include "service/TarnAPI.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using Row = NativeBooksExpenses::Row;
using Group = NativeBooksExpenses::Group;

} // namespace

NativeBooksExpenses::NativeBooksExpenses(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_rows({
          { "date", [](const Row &r) { return r.date; } },
          { "title", [](const Row &r) { return r.title; } },
          { "account", [](const Row &r) { return r.account; } },
          { "amount", [](const Row &r) { return r.amount; } },
      })
    , m_groups({
          { "label", [](const Group &g) { return g.label; } },
          { "count", [](const Group &g) { return g.count; } },
          { "amount", [](const Group &g) { return g.amount; } },
      })
{
}

void NativeBooksExpenses::load(const QString &start, const QString &end)
{
    m_loading = true;
    m_error.clear();
    Q_EMIT changed();
    readRegister(start, end, ++m_generation);
}

QCoro::Task<> NativeBooksExpenses::readRegister(QString start, QString end, int generation)
{
    const QPointer<NativeBooksExpenses> self(this);
    const QString everyAccount;
    QList<TarnBooksRegisterEntry> entries;
    QString failure;
    try {
        qint64 total = 1;
        while (entries.size() < total) {
            const qint64 offset = entries.size();
            TarnBooksRegister page = co_await TarnBooksCalls::booksRegister(m_api, start, end, everyAccount, offset);
            if (!self || generation != m_generation)
                co_return;
            total = page.entries.isEmpty() ? entries.size() : page.total;
            entries.append(page.entries);
        }
    } catch (const TarnAPIError &error) {
        failure = error.text();
    }
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    m_error = failure;
    if (failure.isEmpty()) {
        const QList<TarnBooksPages::ExpenseRow> expenses = TarnBooksPages::expenses(entries);
        QList<Row> rows;
        for (const TarnBooksPages::ExpenseRow &row : expenses) {
            rows.append({ row.id, row.date, row.title, row.account, TarnMoneyInput::dollars(row.cents) });
        }
        m_rows.setRows(rows);
        QList<Group> groups;
        for (const TarnBooksPages::Group &group : TarnBooksPages::expensesByAccount(expenses))
            groups.append({ group.label, static_cast<int>(group.count), TarnMoneyInput::dollars(group.cents) });
        m_groups.setRows(groups);
    }
    Q_EMIT changed();
}
