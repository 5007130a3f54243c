#include "screens/calls/TarnSalesLead.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSalesLead TarnSalesLead::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .phone = json.optionalString("phone"_L1),
        .email = json.optionalString("email"_L1),
        .status = json.string("status"_L1),
        .source = json.string("source"_L1),
        .interest = json.string("interest"_L1),
        .owner_name = json.optionalString("owner_name"_L1),
        .estimate = json.integer("estimate"_L1),
        .last_call_at = json.optionalString("last_call_at"_L1),
        .call_count = json.integer("call_count"_L1) };
}
