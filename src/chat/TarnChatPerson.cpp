#include "chat/TarnChatPerson.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnChatPerson TarnChatPerson::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1), .name = json.string("name"_L1), .active = json.boolean("active"_L1) };
}
