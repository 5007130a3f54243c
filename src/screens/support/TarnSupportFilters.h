#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

class TarnJSONObject;

// The board's filters, each left out when unset: a saved view keeps them as
// they are here. `due` is "overdue", "today", "week" (due within seven days
// from today, overdue ones included) or "none" (no due date).
struct TarnSupportFilters {
    std::optional<QString> assignee_id {};
    std::optional<QString> client_id {};
    std::optional<QString> priority {};
    std::optional<QString> due {};
    std::optional<QString> text {};

    static TarnSupportFilters fromJSON(const TarnJSONObject &json);
    [[nodiscard]] QJsonObject toJSON() const;
    [[nodiscard]] bool isEmpty() const { return *this == TarnSupportFilters {}; }

    friend bool operator==(const TarnSupportFilters &, const TarnSupportFilters &) = default;
};
