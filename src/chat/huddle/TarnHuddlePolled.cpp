#include "chat/huddle/TarnHuddlePolled.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddlePolled TarnHuddlePolled::fromJSON(const TarnJSONObject &json)
{
    return { .joined = json.boolean("joined"_L1),
        .signals_ = json.list<TarnHuddleSignal>("signals"_L1),
        .state = json.get<TarnHuddleState>("state"_L1) };
}
