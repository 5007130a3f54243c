#pragma once

#include <QString>

class TarnJSONObject;

// A coaching note an owner or a manager left on a person's week.
struct TarnCoachNote {
    QString id;
    QString author_name;
    QString body;
    QString created_at;

    static TarnCoachNote fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCoachNote &, const TarnCoachNote &) = default;
};
