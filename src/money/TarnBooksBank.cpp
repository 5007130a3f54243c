#include "money/TarnBooksBank.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

bool TarnBooksBankRow::isMercury() const
{
    return source.compare("mercury"_L1, Qt::CaseInsensitive) == 0;
}

TarnBooksBankRow TarnBooksBankRow::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .bank_account_id = json.string("bank_account_id"_L1),
        .row_date = json.string("row_date"_L1),
        .description = json.string("description"_L1),
        .amount = json.integer("amount"_L1),
        .source = json.string("source"_L1),
        .mercury_status = json.optionalString("mercury_status"_L1),
    };
}

TarnBooksMatchedRow TarnBooksMatchedRow::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .row_date = json.string("row_date"_L1),
        .description = json.string("description"_L1),
        .amount = json.integer("amount"_L1),
        .source_type = json.optionalString("source_type"_L1),
    };
}

TarnBooksBankMatch TarnBooksBankMatch::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .entry_date = json.string("entry_date"_L1),
        .memo = json.string("memo"_L1),
        .bank_account_id = json.string("bank_account_id"_L1),
        .amount = json.integer("amount"_L1),
    };
}

TarnBooksImportResult TarnBooksImportResult::fromJSON(const TarnJSONObject &json)
{
    return { .imported = json.integer("imported"_L1), .duplicates = json.integer("duplicates"_L1) };
}

TarnBooksReconciliation TarnBooksReconciliation::fromJSON(const TarnJSONObject &json)
{
    return {
        .bank_account_id = json.string("bank_account_id"_L1),
        .statement_date = json.string("statement_date"_L1),
        .last_closed_date = json.optionalString("last_closed_date"_L1),
        .ledger_balance = json.integer("ledger_balance"_L1),
        .outstanding_total = json.integer("outstanding_total"_L1),
        .adjusted_balance = json.integer("adjusted_balance"_L1),
        .imported_count = json.integer("imported_count"_L1),
        .unmatched_count = json.integer("unmatched_count"_L1),
        .future_match_count = json.integer("future_match_count"_L1),
    };
}

TarnBooksReconciliationClosed TarnBooksReconciliationClosed::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1), .preview = json.get<TarnBooksReconciliation>("preview"_L1) };
}
