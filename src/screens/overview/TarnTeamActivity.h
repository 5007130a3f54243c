#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// What one person is doing now: clocked in or not, the support task they
// have in progress, how many they hold open, and their next event today.
struct TarnTeamActivity {
    QString id;
    QString name;
    QString role;
    bool clocked_in = false;
    std::optional<QString> working_on {};
    std::optional<QString> working_for {};
    qint64 open_tasks = 0;
    std::optional<QString> next_event {};
    std::optional<QString> next_at {};

    static TarnTeamActivity fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTeamActivity &, const TarnTeamActivity &) = default;
};
