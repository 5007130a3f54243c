#include "money/TarnBooksRegister.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBooksRegisterLine TarnBooksRegisterLine::fromJSON(const TarnJSONObject &json)
{
    return {
        .entry_id = json.string("entry_id"_L1),
        .code = json.string("code"_L1),
        .name = json.string("name"_L1),
        .type = json.string("type"_L1),
        .debit = json.integer("debit"_L1),
        .credit = json.integer("credit"_L1),
    };
}

TarnBooksRegisterEntry TarnBooksRegisterEntry::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .entry_date = json.string("entry_date"_L1),
        .memo = json.string("memo"_L1),
        .source_type = json.optionalString("source_type"_L1),
        .reverses_id = json.optionalString("reverses_id"_L1),
        .amount = json.integer("amount"_L1),
        .lines = json.list<TarnBooksRegisterLine>("lines"_L1),
    };
}

TarnBooksRegister TarnBooksRegister::fromJSON(const TarnJSONObject &json)
{
    return {
        .start = json.string("start"_L1),
        .end = json.string("end"_L1),
        .account_id = json.string("account_id"_L1),
        .total = json.integer("total"_L1),
        .limit = json.integer("limit"_L1),
        .offset = json.integer("offset"_L1),
        .entries = json.list<TarnBooksRegisterEntry>("entries"_L1),
    };
}

TarnBooksReport TarnBooksReport::fromJSON(const TarnJSONObject &json)
{
    return {
        .start = json.string("start"_L1),
        .end = json.string("end"_L1),
        .revenue = json.integer("revenue"_L1),
        .expenses = json.integer("expenses"_L1),
        .net_income = json.integer("net_income"_L1),
    };
}
