#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A client as its portal knows it: the customer row and when it became one.
struct TarnClientProfile {
    QString id;
    QString name;
    QString board_id;
    std::optional<QString> phone {};
    std::optional<QString> email {};
    QString created_at;

    static TarnClientProfile fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnClientProfile &, const TarnClientProfile &) = default;
};
