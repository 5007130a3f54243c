#pragma once

class WorkspaceServer;

// The schedule under "/api/calendar/": the person's events in a range and
// their booking links with their bookings. Open to those with the
// "Schedule" app.
namespace ScheduleRoutes {

void add(WorkspaceServer &server);

} // namespace ScheduleRoutes
