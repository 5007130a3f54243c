#include "screens/company/NativeFeedRowModel.h"

#include "money/TarnMoneyInput.h"

using Row = TarnBooksBankRow;

NativeFeedRowModel::NativeFeedRowModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "rowId", [](const Row &r) { return r.id; } },
            { "date", [](const Row &r) { return r.row_date; } },
            { "description", [](const Row &r) { return r.description; } },
            { "amount", [](const Row &r) { return TarnMoneyInput::dollars(r.amount); } },
            { "incoming", [](const Row &r) { return r.amount > 0; } },
            { "categorized", [](const Row &r) { return r.mercury_status.value_or(QString()) == u"matched"; } },
        },
        parent)
{
}
