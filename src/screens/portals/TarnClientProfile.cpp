#include "screens/portals/TarnClientProfile.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnClientProfile TarnClientProfile::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .board_id = json.string("board_id"_L1),
        .phone = json.optionalString("phone"_L1),
        .email = json.optionalString("email"_L1),
        .created_at = json.string("created_at"_L1) };
}
