#pragma once

class WorkspaceServer;

// The people screen's time clock under "/api/people/timeclock" and payroll
// under "/api/payroll" (see workspace/README.md for the paths and keys).
namespace PeopleRoutes {

// Plants the demo's time clock and payroll when they are empty, and registers the routes.
void add(WorkspaceServer &server);

} // namespace PeopleRoutes
