#include "inbox/TarnInboxCustomer.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxCustomer TarnInboxCustomer::fromJSON(const TarnJSONObject &json)
{
    return { .client_id = json.string("client_id"_L1) };
}
