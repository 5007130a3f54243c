#pragma once

#include "screens/people/TarnPayrollAdjustment.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// One person's pay in a period: `minutes` clocked in it at `rate` cents an
// hour make `regular_pay`; `total` adds the adjustments. Money in cents.
struct TarnPayrollLine {
    QString person_id;
    QString person_name;
    qint64 rate = 0;
    qint64 minutes = 0;
    qint64 regular_pay = 0;
    QList<TarnPayrollAdjustment> adjustments;
    qint64 total = 0;

    static TarnPayrollLine fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPayrollLine &, const TarnPayrollLine &) = default;
};
