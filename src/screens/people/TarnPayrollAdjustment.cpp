#include "screens/people/TarnPayrollAdjustment.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPayrollAdjustment TarnPayrollAdjustment::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .label = json.string("label"_L1),
        .amount = json.integer("amount"_L1),
        .created_by_name = json.string("created_by_name"_L1),
        .created_at = json.string("created_at"_L1) };
}
