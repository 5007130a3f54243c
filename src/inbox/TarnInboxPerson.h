#pragma once

#include <QString>

class TarnJSONObject;

// A team member the thread may be assigned to or who may be mentioned.
struct TarnInboxPerson {
    QString id;
    QString name;

    static TarnInboxPerson fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxPerson &, const TarnInboxPerson &) = default;
};
