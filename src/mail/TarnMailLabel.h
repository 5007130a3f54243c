#pragma once

#include <QString>

class TarnJSONObject;

struct TarnMailLabel {
    QString id;
    QString name;

    static TarnMailLabel fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMailLabel &, const TarnMailLabel &) = default;
};
