#include "chat/huddle/TarnHuddleList.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleList TarnHuddleList::fromJSON(const TarnJSONObject &json)
{
    return { .huddles = json.list<TarnHuddleState>("huddles"_L1) };
}
