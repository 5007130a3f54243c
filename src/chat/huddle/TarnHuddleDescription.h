#pragma once

#include <QJsonObject>
#include <QString>

class TarnJSONObject;

// A session description: an offer or an answer with its SDP text.
struct TarnHuddleDescription {
    QString type; // "offer" or "answer"
    QString sdp;

    static TarnHuddleDescription fromJSON(const TarnJSONObject &json);
    [[nodiscard]] QJsonObject toJSON() const;

    friend bool operator==(const TarnHuddleDescription &, const TarnHuddleDescription &) = default;
};
