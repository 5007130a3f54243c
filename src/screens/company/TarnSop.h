#pragma once

#include <QString>

class TarnJSONObject;

// One page of the company's handbook: how a thing is done here.
struct TarnSop {
    QString id;
    QString title;
    QString category;
    QString body;
    QString author_name;
    QString updated_at;

    static TarnSop fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSop &, const TarnSop &) = default;
};
