#pragma once

#include <QDate>

class ScheduleStore;

// The demo's calendars: a lived-in pattern of meetings, calls, focus time and
// all-day days for the team over the weeks around `today`, and booking links
// with bookings still to come.
namespace ScheduleSeed {

void plant(ScheduleStore &schedule, const QDate &today);

} // namespace ScheduleSeed
