#include "screens/support/TarnSupportClient.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportClient TarnSupportClient::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .phone = json.optionalString("phone"_L1),
        .email = json.optionalString("email"_L1),
        .notes = json.list<TarnSupportComment>("notes"_L1),
        .tasks = json.list<TarnSupportTaskSummary>("tasks"_L1),
        .logged_minutes = json.integer("logged_minutes"_L1) };
}
