#pragma once

#include "screens/people/TarnPeopleRequests.h"
#include "screens/people/TarnTimeClockWeek.h"
#include "screens/people/TarnTimeEntry.h"

#include <QCoroTask>
#include <QString>

#include <optional>

class TarnAPI;

// The people screen's endpoints: the time clock under "/api/people/timeclock".
namespace TarnPeopleCalls {

// The week beginning on Monday `week` ("YYYY-MM-DD"); another person's only
// for an owner.
QCoro::Task<TarnTimeClockWeek> timeClock(TarnAPI &api, const QString &week, const std::optional<QString> &person);
// Both answer the entry as it now is; clocking in twice, or out without
// being in, is refused.
QCoro::Task<TarnTimeEntry> clockIn(TarnAPI &api);
QCoro::Task<TarnTimeEntry> clockOut(TarnAPI &api);
// An owner's correction; a stale `version` is refused with the entry as it is.
QCoro::Task<TarnTimeEntry> editTimeEntry(TarnAPI &api, const QString &id, const TarnTimeEntryEdit &edit);

} // namespace TarnPeopleCalls
