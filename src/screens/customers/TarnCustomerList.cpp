#include "screens/customers/TarnCustomerList.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCustomerList TarnCustomerList::fromJSON(const TarnJSONObject &json)
{
    return { .clients = json.list<TarnCustomerSummary>("clients"_L1) };
}
