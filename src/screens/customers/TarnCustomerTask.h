#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A task on a customer; `due_on` is a day, YYYY-MM-DD.
struct TarnCustomerTask {
    QString id;
    QString title;
    std::optional<QString> due_on {};
    bool done = false;

    static TarnCustomerTask fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCustomerTask &, const TarnCustomerTask &) = default;
};
