#pragma once

#include <QString>

class TarnJSONObject;

// A reminder about a customer, for the person who set it.
struct TarnRecordReminder {
    QString id;
    QString text;
    QString remind_at;
    QString person_name;

    static TarnRecordReminder fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnRecordReminder &, const TarnRecordReminder &) = default;
};
