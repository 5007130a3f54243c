#include "auth/AuthExchange.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

AuthExchange::Cookie AuthExchange::Cookie::fromJSON(const TarnJSONObject &json)
{
    return { json.string("value"_L1) };
}

AuthExchange::User AuthExchange::User::fromJSON(const TarnJSONObject &json)
{
    return { json.string("name"_L1) };
}

AuthExchange AuthExchange::fromJSON(const TarnJSONObject &json)
{
    return { json.get<Cookie>("cookie"_L1), json.get<User>("user"_L1) };
}
