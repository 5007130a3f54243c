#include "money/NativeBankRows.h"

#include "money/NativeOutcome.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnMoneyInput.h"
#include "service/TarnAPI.h"

#include <QPointer>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

using Row = NativeBankRows::Row;

QList<NativeKeyedListModel<Row, &Row::id>::Role> roles()
{
    return {
        { "rowId", [](const Row &r) { return r.id; } },
        { "date", [](const Row &r) { return r.date; } },
        { "description", [](const Row &r) { return r.description; } },
        { "amount", [](const Row &r) { return r.amount; } },
        { "detail", [](const Row &r) { return r.detail; } },
    };
}

} // namespace

NativeBankRows::NativeBankRows(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_unmatched(roles())
    , m_matched(roles())
{
}

void NativeBankRows::setBooks(const TarnBooks &books)
{
    m_books = books;
    QList<Row> waiting;
    for (const TarnBooksBankRow &row : books.bank_rows) {
        const QString source = row.isMercury() ? u"Bank feed"_s : u"Statement import"_s;
        waiting.append({ row.id, row.row_date, row.description, TarnMoneyInput::dollars(row.amount), source });
    }
    m_unmatched.setRows(waiting);
    QList<Row> reviewed;
    for (const TarnBooksMatchedRow &row : books.bank_matched.value_or(QList<TarnBooksMatchedRow>()))
        reviewed.append(
            { row.id, row.row_date, row.description, TarnMoneyInput::dollars(row.amount), u"Matched to ledger"_s });
    m_matched.setRows(reviewed);
}

QVariantList NativeBankRows::candidates(const QString &rowID) const
{
    QVariantList found;
    for (const TarnBooksBankRow &row : m_books.bank_rows) {
        if (row.id != rowID)
            continue;
        for (const TarnBooksBankMatch &entry : m_books.bank_matches.value_or(QList<TarnBooksBankMatch>())) {
            if (entry.bank_account_id == row.bank_account_id && entry.amount == row.amount)
                found.append(QVariantMap {
                    { u"id"_s, entry.id }, { u"label"_s, QString(entry.entry_date + u"  "_s + entry.memo) } });
        }
    }
    return found;
}

template <typename Call> QCoro::Task<> NativeBankRows::change(Call call, QString message)
{
    const QPointer<NativeBankRows> self(this);
    m_busy = true;
    m_error.clear();
    Q_EMIT stateChanged();
    const auto outcome = co_await nativeOutcome(std::move(call));
    if (!self)
        co_return;
    m_busy = false;
    m_error = outcome.error;
    Q_EMIT stateChanged();
    if (outcome.error.isEmpty()) {
        Q_EMIT done(message);
        Q_EMIT booksChanged();
    }
}

void NativeBankRows::match(const QString &rowID, const QString &entryID)
{
    change([this, rowID, entryID] { return TarnBooksCalls::matchBooksBankRow(m_api, rowID, entryID); },
        u"Matched to ledger"_s);
}

void NativeBankRows::unmatch(const QString &rowID)
{
    change([this, rowID] { return TarnBooksCalls::unmatchBooksBankRow(m_api, rowID); }, u"Unmatched"_s);
}

void NativeBankRows::categorize(const QString &rowID, const QString &accountID)
{
    change([this, rowID, accountID] { return TarnBooksCalls::categorizeBooksBankRow(m_api, rowID, accountID); },
        u"Categorized"_s);
}
