#pragma once

#include <QString>

class TarnJSONObject;

// A comment on a task, or a note on a customer.
struct TarnSupportComment {
    QString id;
    QString author_id;
    QString author_name;
    QString body;
    QString created_at;

    static TarnSupportComment fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportComment &, const TarnSupportComment &) = default;
};
