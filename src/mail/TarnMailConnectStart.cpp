#include "mail/TarnMailConnectStart.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailConnectStart TarnMailConnectStart::fromJSON(const TarnJSONObject &json)
{
    return { .url = json.string("url"_L1) };
}
