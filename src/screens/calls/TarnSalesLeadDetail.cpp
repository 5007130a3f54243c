#include "screens/calls/TarnSalesLeadDetail.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSalesLeadDetail TarnSalesLeadDetail::fromJSON(const TarnJSONObject &json)
{
    return { .lead = json.get<TarnSalesLead>("lead"_L1), .calls = json.list<TarnCall>("calls"_L1) };
}
