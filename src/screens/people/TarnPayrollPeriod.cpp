#include "screens/people/TarnPayrollPeriod.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPayrollPeriod TarnPayrollPeriod::fromJSON(const TarnJSONObject &json)
{
    return { .start = json.string("start"_L1), .end = json.string("end"_L1), .status = json.string("status"_L1) };
}
