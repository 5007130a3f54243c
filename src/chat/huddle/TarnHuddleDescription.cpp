#include "chat/huddle/TarnHuddleDescription.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHuddleDescription TarnHuddleDescription::fromJSON(const TarnJSONObject &json)
{
    return { .type = json.string("type"_L1), .sdp = json.string("sdp"_L1) };
}

QJsonObject TarnHuddleDescription::toJSON() const
{
    return { { u"type"_s, type }, { u"sdp"_s, sdp } };
}
