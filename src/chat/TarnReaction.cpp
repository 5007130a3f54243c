#include "chat/TarnReaction.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnReaction TarnReaction::fromJSON(const TarnJSONObject &json)
{
    return { .emoji = json.string("emoji"_L1), .count = json.integer("count"_L1), .mine = json.boolean("mine"_L1) };
}
