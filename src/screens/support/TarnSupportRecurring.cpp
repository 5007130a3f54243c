#include "screens/support/TarnSupportRecurring.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportRecurring TarnSupportRecurring::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .assignee_id = json.optionalString("assignee_id"_L1),
        .assignee_name = json.optionalString("assignee_name"_L1),
        .priority = json.string("priority"_L1),
        .every = json.string("every"_L1),
        .active = json.boolean("active"_L1),
        .next_due = json.optionalString("next_due"_L1) };
}
