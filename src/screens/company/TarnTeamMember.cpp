#include "screens/company/TarnTeamMember.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTeamMember TarnTeamMember::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .role = json.string("role"_L1),
        .owner = json.boolean("owner"_L1),
        .apps = json.optionalList<QString>("apps"_L1) };
}
