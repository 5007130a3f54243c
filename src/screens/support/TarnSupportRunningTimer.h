#pragma once

#include <QString>

class TarnJSONObject;

// Someone's timer running on a task.
struct TarnSupportRunningTimer {
    QString person_id;
    QString person_name;
    QString started_at;

    static TarnSupportRunningTimer fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportRunningTimer &, const TarnSupportRunningTimer &) = default;
};
