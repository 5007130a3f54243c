#include "chat/huddle/TarnHuddleSignalData.h"

#include "service/TarnJSONObject.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

TarnHuddleSignalData TarnHuddleSignalData::fromJSON(const TarnJSONObject &json)
{
    return { .description = json.optional<TarnHuddleDescription>("description"_L1),
        .candidates = json.optionalList<TarnHuddleCandidate>("candidates"_L1) };
}

QJsonObject TarnHuddleSignalData::toJSON() const
{
    QJsonObject json;
    if (description)
        json.insert(u"description"_s, description->toJSON());
    if (candidates) {
        QJsonArray list;
        for (const TarnHuddleCandidate &candidate : *candidates)
            list.append(candidate.toJSON());
        json.insert(u"candidates"_s, list);
    }
    return json;
}
