#include "screens/customers/TarnCustomerSummary.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCustomerSummary TarnCustomerSummary::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .stage = json.string("stage"_L1),
        .email = json.string("email"_L1),
        .phone = json.string("phone"_L1),
        .company = json.string("company"_L1),
        .follow_up_on = json.optionalString("follow_up_on"_L1),
        .open_tasks = json.integer("open_tasks"_L1) };
}
