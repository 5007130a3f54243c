#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One customer in the register's list and in command search.
struct TarnCustomerSummary {
    QString id;
    QString name;
    QString stage;
    QString email;
    QString phone;
    QString company;
    std::optional<QString> follow_up_on {};
    qint64 open_tasks = 0;

    static TarnCustomerSummary fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCustomerSummary &, const TarnCustomerSummary &) = default;
};
