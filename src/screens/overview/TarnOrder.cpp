#include "screens/overview/TarnOrder.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnOrder TarnOrder::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .client_name = json.string("client_name"_L1),
        .summary = json.string("summary"_L1),
        .status = json.string("status"_L1),
        .carrier = json.optionalString("carrier"_L1),
        .tracking = json.optionalString("tracking"_L1),
        .eta = json.string("eta"_L1),
        .updated_at = json.string("updated_at"_L1) };
}
