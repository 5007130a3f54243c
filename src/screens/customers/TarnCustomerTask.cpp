#include "screens/customers/TarnCustomerTask.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCustomerTask TarnCustomerTask::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .due_on = json.optionalString("due_on"_L1),
        .done = json.boolean("done"_L1) };
}
