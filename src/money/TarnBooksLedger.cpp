#include "money/TarnBooksLedger.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBooksParty TarnBooksParty::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .kind = json.string("kind"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .phone = json.string("phone"_L1),
        .address = json.string("address"_L1),
        .active = json.integer("active"_L1),
    };
}

TarnBooksAccount TarnBooksAccount::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .code = json.string("code"_L1),
        .name = json.string("name"_L1),
        .type = json.string("type"_L1),
        .debits = json.integer("debits"_L1),
        .credits = json.integer("credits"_L1),
        .bank = json.integer("bank"_L1),
    };
}

TarnBooksEntry TarnBooksEntry::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .entry_date = json.string("entry_date"_L1),
        .memo = json.string("memo"_L1),
        .source_type = json.optionalString("source_type"_L1),
        .source_id = json.optionalString("source_id"_L1),
        .amount = json.integer("amount"_L1),
    };
}
