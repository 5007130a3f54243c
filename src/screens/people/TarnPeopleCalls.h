#pragma once

#include "screens/people/TarnHRRecord.h"
#include "screens/people/TarnPayrollOverview.h"
#include "screens/people/TarnPeopleRequests.h"
#include "screens/people/TarnTimeClockWeek.h"
#include "screens/people/TarnTimeEntry.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QString>

#include <optional>

class TarnAPI;

// The people screen's endpoints: HR records under "/api/people/hr", the
// time clock under "/api/people/timeclock" and payroll, an owner's, under
// "/api/payroll".
namespace TarnPeopleCalls {

// The team's HR records by name; contact details only for an owner.
QCoro::Task<QList<TarnHRRecord>> hrRecords(TarnAPI &api);
// An owner's change; a stale `version` is refused with the record as it is.
QCoro::Task<TarnHRRecord> updateHRRecord(TarnAPI &api, const QString &id, const TarnHRRecordEdit &edit);

// The week beginning on Monday `week` ("YYYY-MM-DD"); another person's only
// for an owner.
QCoro::Task<TarnTimeClockWeek> timeClock(TarnAPI &api, const QString &week, const std::optional<QString> &person);
// Both answer the entry as it now is; clocking in twice, or out without
// being in, is refused.
QCoro::Task<TarnTimeEntry> clockIn(TarnAPI &api);
QCoro::Task<TarnTimeEntry> clockOut(TarnAPI &api);
// An owner's correction; a stale `version` is refused with the entry as it is.
QCoro::Task<TarnTimeEntry> editTimeEntry(TarnAPI &api, const QString &id, const TarnTimeEntryEdit &edit);

// A period by its first day ("YYYY-MM-DD"); the current one without it.
QCoro::Task<TarnPayrollOverview> payrollOverview(TarnAPI &api, const std::optional<QString> &period);
// Each change answers the period as it now is.
QCoro::Task<TarnPayrollOverview> payrollAction(TarnAPI &api, const QString &period, const TarnPayrollAction &action);
QCoro::Task<TarnPayrollOverview> savePayrollNotes(TarnAPI &api, const QString &period, const TarnPayrollNotes &notes);
QCoro::Task<TarnPayrollOverview> removePayrollAdjustment(TarnAPI &api, const QString &id);
// The period as CSV; a period without lines is refused rather than answered empty.
QCoro::Task<QByteArray> exportPayroll(TarnAPI &api, const QString &period);

} // namespace TarnPeopleCalls
