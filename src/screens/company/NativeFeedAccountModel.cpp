#include "screens/company/NativeFeedAccountModel.h"

#include "money/TarnMoneyInput.h"

using Row = TarnMercuryAccount;

namespace {

QString dollarsOrEmpty(const std::optional<qint64> &cents)
{
    return cents ? TarnMoneyInput::dollars(*cents) : QString();
}

} // namespace

NativeFeedAccountModel::NativeFeedAccountModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "accountId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "mask", [](const Row &r) { return r.mask; } },
            { "balance", [](const Row &r) { return dollarsOrEmpty(r.balance); } },
            { "booksBalance", [](const Row &r) { return TarnMoneyInput::dollars(r.books_balance); } },
            { "uncategorized", [](const Row &r) { return r.uncategorized; } },
            { "baselineDate", [](const Row &r) { return r.baseline_date.value_or(QString()); } },
            { "baselineBalance", [](const Row &r) { return dollarsOrEmpty(r.baseline_balance); } },
            { "reconciledOn", [](const Row &r) { return r.reconciled_on.value_or(QString()); } },
            { "reconciledDifference", [](const Row &r) { return dollarsOrEmpty(r.reconciled_difference); } },
        },
        parent)
{
}
