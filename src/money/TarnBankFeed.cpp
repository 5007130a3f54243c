#include "money/TarnBankFeed.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMercuryAccount TarnMercuryAccount::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .bank_account_id = json.string("bank_account_id"_L1),
        .name = json.string("name"_L1),
        .mask = json.string("mask"_L1),
        .connected_at = json.string("connected_at"_L1),
        .balance = json.optionalInteger("balance"_L1),
        .books_balance = json.integer("books_balance"_L1),
        .uncategorized = json.integer("uncategorized"_L1),
        .baseline_date = json.optionalString("baseline_date"_L1),
        .baseline_balance = json.optionalInteger("baseline_balance"_L1),
        .reconciled_on = json.optionalString("reconciled_on"_L1),
        .reconciled_difference = json.optionalInteger("reconciled_difference"_L1),
    };
}

TarnMercurySummary TarnMercurySummary::fromJSON(const TarnJSONObject &json)
{
    return {
        .accounts = json.list<TarnMercuryAccount>("accounts"_L1),
        .uncategorized = json.integer("uncategorized"_L1),
        .available = json.integer("available"_L1),
        .rows = json.list<TarnBooksBankRow>("rows"_L1),
    };
}

TarnExternalReconciliation TarnExternalReconciliation::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .account_id = json.string("account_id"_L1),
        .date = json.string("date"_L1),
        .external_balance = json.integer("external_balance"_L1),
        .books_balance = json.integer("books_balance"_L1),
        .difference = json.integer("difference"_L1),
        .uncategorized = json.integer("uncategorized"_L1),
        .balanced = json.boolean("balanced"_L1),
    };
}
