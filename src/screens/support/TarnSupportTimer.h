#pragma once

#include <QString>

class TarnJSONObject;

// The signed-in person's running timer, started at `started_at` (ISO 8601).
struct TarnSupportTimer {
    QString task_id;
    QString task_title;
    QString started_at;

    static TarnSupportTimer fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportTimer &, const TarnSupportTimer &) = default;
};
