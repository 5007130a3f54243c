#include "chat/huddle/TarnHuddleIceServer.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleIceServer TarnHuddleIceServer::fromJSON(const TarnJSONObject &json)
{
    return { .urls = json.list<QString>("urls"_L1),
        .username = json.optionalString("username"_L1),
        .credential = json.optionalString("credential"_L1) };
}
