#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A customer on the "leads" board with what sales knows of it. `status` is
// "new", "contacted", "qualified" or "lost"; `estimate` in cents.
struct TarnSalesLead {
    QString id;
    QString name;
    std::optional<QString> phone {};
    std::optional<QString> email {};
    QString status;
    QString source;
    QString interest;
    std::optional<QString> owner_name {};
    qint64 estimate = 0;
    std::optional<QString> last_call_at {};
    qint64 call_count = 0;

    static TarnSalesLead fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSalesLead &, const TarnSalesLead &) = default;
};
