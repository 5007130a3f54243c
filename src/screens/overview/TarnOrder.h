#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// An order on its way to a customer. `status` moves "packing", "shipped",
// "delivered"; `eta` is the day it is due ("yyyy-MM-dd").
struct TarnOrder {
    QString id;
    QString client_name;
    QString summary;
    QString status;
    std::optional<QString> carrier {};
    std::optional<QString> tracking {};
    QString eta;
    QString updated_at;

    static TarnOrder fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnOrder &, const TarnOrder &) = default;
};
