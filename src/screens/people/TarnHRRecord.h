#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One person's HR record: who they are in the company, since when, and how
// to reach them and whom to call for them. `phone` and `emergency_contact`
// come only to an owner; `version` grows with each change.
struct TarnHRRecord {
    QString id;
    QString name;
    QString email;
    QString job_title;
    QString employment;
    QString started_on;
    std::optional<QString> phone {};
    std::optional<QString> emergency_contact {};
    bool clocked_in = false;
    qint64 version = 0;

    static TarnHRRecord fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnHRRecord &, const TarnHRRecord &) = default;
};
