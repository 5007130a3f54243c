#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

// A partial change of a task: only the fields set are sent, with the
// `version` of the task it was made on. An empty text clears a due date,
// an assignee or a customer.
struct TarnSupportTaskUpdate {
    qint64 version = 0;
    std::optional<QString> title {};
    std::optional<QString> description {};
    std::optional<QString> status {};
    std::optional<QString> priority {};
    std::optional<QString> due_date {};
    std::optional<QString> assignee_id {};
    std::optional<QString> client_id {};

    [[nodiscard]] QJsonObject toJSON() const;

    friend bool operator==(const TarnSupportTaskUpdate &, const TarnSupportTaskUpdate &) = default;
};
