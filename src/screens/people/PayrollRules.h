#pragma once

#include "screens/people/TarnPayrollLine.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

// Pay periods and the payroll export, on QtCore alone: the workspace writes
// the export by them.
namespace PayrollRules {

// Periods are two weeks long, Monday to Sunday, counted from this Monday.
inline const QDate firstPeriodStart { 2026, 1, 5 };
constexpr int periodDays = 14;
constexpr qsizetype notesLimit = 4000;
constexpr qsizetype labelLimit = 120;
// An adjustment beyond this either way is a typing slip.
constexpr qint64 adjustmentLimit = 1'000'000;

// The first day of the period holding `day`, also before the first period.
[[nodiscard]] QDate periodStart(QDate day);
// What a period of this status may do next: "approve", "reopen", "mark-paid"
// or "adjust".
[[nodiscard]] bool allows(const QString &status, const QString &action);
// Pay for minutes at a rate in cents an hour, rounded to the nearest cent.
[[nodiscard]] qint64 pay(qint64 minutes, qint64 rate);
// The export of a period: a header, one row per line and a total row, RFC 4180
// quoting; empty when there are no lines, which is not a file worth saving.
[[nodiscard]] QByteArray csv(QDate start, QDate end, const QList<TarnPayrollLine> &lines);

} // namespace PayrollRules
