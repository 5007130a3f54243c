#include "chat/huddle/TarnHuddleSignal.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleSignal TarnHuddleSignal::fromJSON(const TarnJSONObject &json)
{
    return { .seq = json.integer("seq"_L1),
        .from = json.string("from"_L1),
        .from_conn = json.string("from_conn"_L1),
        .type = json.string("type"_L1),
        .data = json.get<TarnHuddleSignalData>("data"_L1) };
}
