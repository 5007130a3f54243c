#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A recurring rule: `every` is "week", "month" or "quarter"; `next_due` the
// day of its open task, if it has one.
struct TarnSupportRecurring {
    QString id;
    QString title;
    std::optional<QString> client_id {};
    std::optional<QString> client_name {};
    std::optional<QString> assignee_id {};
    std::optional<QString> assignee_name {};
    QString priority;
    QString every;
    bool active = false;
    std::optional<QString> next_due {};

    static TarnSupportRecurring fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportRecurring &, const TarnSupportRecurring &) = default;
};
