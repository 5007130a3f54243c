#include "screens/customers/TarnCustomerContact.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCustomerContact TarnCustomerContact::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .role = json.string("role"_L1),
        .email = json.string("email"_L1),
        .phone = json.string("phone"_L1) };
}
