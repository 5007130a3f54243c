#pragma once

#include <QDate>

class ScheduleGoogle;
class ScheduleStore;

// The demo's calendars: a lived-in pattern of meetings, calls, focus time and
// all-day days for the team over the weeks around `today`, and booking links
// with bookings still to come.
namespace ScheduleSeed {

void plant(ScheduleStore &schedule, const QDate &today);
// The owner's Google calendar granted, with what an owner keeps there beside
// the workspace's (the personal and the outside) from five weeks before
// `today` to six after.
void plantGoogle(ScheduleGoogle &calendar, const QDate &today);

} // namespace ScheduleSeed
