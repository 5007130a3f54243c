#pragma once

#include <QString>

class TarnJSONObject;

// A one-off amount on a person's pay in a period, in cents (negative for a
// deduction), with who added it and when.
struct TarnPayrollAdjustment {
    QString id;
    QString label;
    qint64 amount = 0;
    QString created_by_name;
    QString created_at;

    static TarnPayrollAdjustment fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPayrollAdjustment &, const TarnPayrollAdjustment &) = default;
};
