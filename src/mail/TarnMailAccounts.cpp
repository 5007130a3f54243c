#include "mail/TarnMailAccounts.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailAccounts TarnMailAccounts::fromJSON(const TarnJSONObject &json)
{
    return { .accounts = json.list<TarnMailPerson>("accounts"_L1) };
}
