#include "chat/huddle/TarnHuddleCandidate.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleCandidate TarnHuddleCandidate::fromJSON(const TarnJSONObject &json)
{
    return { .candidate = json.string("candidate"_L1),
        .sdpMid = json.optionalString("sdpMid"_L1),
        .sdpMLineIndex = json.integer("sdpMLineIndex"_L1) };
}

QJsonObject TarnHuddleCandidate::toJSON() const
{
    QJsonObject json { { u"candidate"_s, candidate }, { u"sdpMLineIndex"_s, sdpMLineIndex } };
    if (sdpMid)
        json.insert(u"sdpMid"_s, *sdpMid);
    return json;
}
