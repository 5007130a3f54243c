#pragma once

#include <QString>

class TarnJSONObject;

// A pay period: `start` and `end` days ("YYYY-MM-DD", both inside it) and
// its `status`, "open", "approved" or "paid".
struct TarnPayrollPeriod {
    QString start;
    QString end;
    QString status;

    static TarnPayrollPeriod fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPayrollPeriod &, const TarnPayrollPeriod &) = default;
};
