#pragma once

#include "screens/people/TarnPayrollLine.h"
#include "screens/people/TarnPayrollPeriod.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// A pay period as payroll shows it: its lines by name, the period's total
// in cents, its notes with the `version` a change to them is based on, and
// the recent periods to choose from, newest first.
struct TarnPayrollOverview {
    TarnPayrollPeriod period;
    QString notes;
    qint64 version = 0;
    QList<TarnPayrollLine> lines;
    qint64 total = 0;
    QList<TarnPayrollPeriod> periods;

    static TarnPayrollOverview fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPayrollOverview &, const TarnPayrollOverview &) = default;
};
